#include "inventory/CardList.h"

#include <QStringList>

#include <map>
#include <utility>

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
    std::map<QString, QString> serialNumbers; // of the first card of each model
    for (const Card &entry : entries) {
        if (!entry.namesModelOnly())
            serialNumbers.try_emplace(entry.model(), entry.serialNumber());
    }
    QList<Card> cards;
    std::map<std::pair<QString, QString>, qsizetype> places;
    for (const Card &entry : entries) {
        const auto first = entry.namesModelOnly() ? serialNumbers.find(entry.model()) : serialNumbers.end();
        const QString &serialNumber = first == serialNumbers.end() ? entry.serialNumber() : first->second;
        const auto [place, isNew] = places.try_emplace({ entry.model(), serialNumber }, cards.size());
        if (isNew)
            cards.append(entry);
        else
            cards[place->second].join(entry);
    }
    return cards;
}
