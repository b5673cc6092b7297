// The card list: entries, cards merged from them, and the channels that follow.

#include "channels/Channel.h"
#include "fuzzing/Fuzz.h"
#include "inventory/CardFamilies.h"
#include "inventory/CardList.h"
#include "inventory/ChannelFactory.h"

#include <QSet>

namespace {

qsizetype microCount(const QList<Card> &cards)
{
    qsizetype count = 0;
    for (const Card &card : cards)
        count += card.micros().size();
    return count;
}

void checkCards(const QString &text)
{
    const QList<Card> entries = CardList::parse(text);
    const QList<Card> cards = CardList::consolidated(entries);
    Fuzz::require(entries.size() <= text.count(u',') + 1, "an entry of the list is one card at most");
    Fuzz::require(microCount(entries) == entries.size(), "an entry has one micro");
    Fuzz::require(microCount(cards) == microCount(entries), "merging loses no micro");
    Fuzz::require(microCount(CardList::consolidated(cards)) <= microCount(cards) &&
                      CardList::consolidated(cards).size() == cards.size(),
                  "merged cards are merged");
    for (const Card &card : cards) {
        Fuzz::require(card.isValid() && !card.model().isEmpty(), "a card has a micro and a model");
        Fuzz::require(card.GetFormattedCardInfoString().startsWith(card.model() + u';'), "a card tells its model");
    }
    const CardFamilies families = CardFamilies::of(cards);
    const CardFamilies familiesOfEntries = CardFamilies::of(entries);
    Fuzz::require(families.hasK3050OrK3060Card == familiesOfEntries.hasK3050OrK3060Card &&
                      families.hasQLN424Card == familiesOfEntries.hasQLN424Card,
                  "merging loses no family");
}

void checkChannels(const QString &text)
{
    constexpr std::size_t kMostChannels = 11;
    const auto channels = ChannelFactory::create(text, nullptr);
    Fuzz::require(channels.size() <= kMostChannels, "a chassis has no more channels");
    QSet<QString> addresses;
    for (const auto &channel : channels)
        addresses.insert(channel->address());
    Fuzz::require(addresses.size() == static_cast<qsizetype>(channels.size()), "a channel's address is its own");
    // Functions are recognised by digits anywhere in the list, so only an older card behind it takes one away.
    if (!text.contains(QLatin1StringView("K3050")) && !text.contains(QLatin1StringView("K3060")))
        Fuzz::require(ChannelFactory::create(text + QLatin1StringView(",0136"), nullptr).size() >= channels.size(),
                      "a further entry takes no channel away");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromLocal8Bit(Fuzz::bytes(data, size));
    checkCards(text);
    checkChannels(text);
    return 0;
}
