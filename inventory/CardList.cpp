#include "inventory/CardList.h"

#include <QStringList>

#include <algorithm>

namespace {

/// The entry that stands for the whole card: the first that tells of it with a serial number, if there is one.
const Card &leaderOf(const Card &entry, const QList<Card> &entries)
{
    const auto leads = [&entry](const Card &candidate) {
        return !candidate.namesModelOnly() && entry.isPartOf(candidate);
    };
    const auto leader = std::find_if(entries.begin(), entries.end(), leads);
    if (leader != entries.end())
        return *leader;
    return *std::find_if(entries.begin(), entries.end(),
                         [&entry](const Card &candidate) { return entry.isPartOf(candidate); });
}

} // namespace

QList<Card> CardList::parse(const QString &text)
{
    QList<Card> entries;
    for (const QString &entry : text.split(u',')) {
        if (const Card card(entry); card.isValid())
            entries.append(card);
    }
    return entries;
}

QList<Card> CardList::consolidated(const QList<Card> &entries)
{
    QList<Card> cards;
    QList<const Card *> leaders;
    for (const Card &entry : entries) {
        const Card &leader = leaderOf(entry, entries);
        const auto index = leaders.indexOf(&leader);
        if (index >= 0) {
            cards[index].AddMicro(entry.micros().first());
            continue;
        }
        Card card = leader;
        card.setMicros(entry.micros());
        cards.append(card);
        leaders.append(&leader);
    }
    return cards;
}
