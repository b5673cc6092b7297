#include "inventory/Inventory.h"

#include "channels/TmoipCard.h"
#include "channels/UniversalChan.h"
#include "inventory/CardList.h"
#include "inventory/ChannelFactory.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

Inventory::Inventory(ChannelLink &link) : m_link(link) {}

Inventory::~Inventory() = default;

void Inventory::takeCardList(const QString &cardList)
{
    m_isKnown = true;
    m_cards = CardList::parse(cardList);
    consolidate();
}

void Inventory::consolidate() { m_cards = CardList::consolidated(m_cards); }

QStringList Inventory::cardInfoStrings() const
{
    QStringList texts;
    for (const Card &card : m_cards)
        texts += card.GetFormattedCardInfoString();
    return texts;
}

UniversalChan *Inventory::addSystemChannel(const QString &systemIdentifier)
{
    auto channel = std::make_unique<UniversalChan>(nullptr, u"0"_s, &m_link);
    m_systemChannel = channel.get();
    m_systemChannel->setSystemIdentifier(systemIdentifier);
    m_channels.push_back(std::move(channel));
    return m_systemChannel;
}

QList<Channel *> Inventory::addChannels(const QString &cardList)
{
    QList<Channel *> added;
    for (auto &channel : ChannelFactory::create(cardList, &m_link)) {
        added.append(channel.get());
        m_channels.push_back(std::move(channel));
    }
    return added;
}

TmoipCard *Inventory::addTmoipCard(const QString &name)
{
    static const QRegularExpression slot(u"^(?:%1)?(\\d{1,2})$"_s.arg(TmoipCard::ChanType));
    const QString number = slot.match(name).captured(1);
    auto owned = std::make_unique<TmoipCard>(nullptr, number, &m_link);
    TmoipCard *const card = owned.get();
    const auto isKnown = [card](const auto &channel) { return channel->address() == card->address(); };
    if (number.isEmpty() || std::ranges::any_of(m_channels, isKnown))
        return nullptr;
    m_channels.push_back(std::move(owned));
    return card;
}
