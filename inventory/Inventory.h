#pragma once

#include "inventory/Card.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class Channel;
class ChannelLink;
class TmoipCard;
class UniversalChan;

/// What the far end of a link has: its cards, and the channels made for them. Owns both.
class Inventory
{
public:
    /// @param link carries the channels' commands; outlives this
    explicit Inventory(ChannelLink &link);
    ~Inventory();

    /// Whether a card list was taken.
    [[nodiscard]] bool isKnown() const { return m_isKnown; }
    /// Takes the first card list: its cards, consolidated.
    void takeCardList(const QString &cardList);
    /// Merges the card list's entries into one card each.
    void consolidate();
    [[nodiscard]] const QList<Card> &cards() const { return m_cards; }
    /// Info strings of the cards, one text a card.
    [[nodiscard]] QStringList cardInfoStrings() const;

    [[nodiscard]] const std::vector<std::unique_ptr<Channel>> &channels() const { return m_channels; }
    /// The system channel; null until it is made.
    [[nodiscard]] UniversalChan *systemChannel() const { return m_systemChannel; }

    UniversalChan *addSystemChannel(const QString &systemIdentifier);
    /// Makes the channels that the card list names.
    QList<Channel *> addChannels(const QString &cardList);
    /// Makes a TMoIP card with its streams.
    /// @param name "TM" and the card's number, or the number alone, in one or two digits
    /// @return null for any other name, and for a card that is already known
    TmoipCard *addTmoipCard(const QString &name);

private:
    ChannelLink &m_link;
    bool m_isKnown = false;
    QList<Card> m_cards;
    std::vector<std::unique_ptr<Channel>> m_channels;
    UniversalChan *m_systemChannel = nullptr;
};
