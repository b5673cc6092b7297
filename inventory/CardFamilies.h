#pragma once

#include <QList>

class Card;

/// Families of cards that decide what the panels show.
struct CardFamilies
{
    bool hasQLN424Card = false;
    bool hasK412WCard = false;
    bool hasQLDXCard = false;
    bool hasK3050OrK3060Card = false;

    /// Derived from the models of the cards.
    [[nodiscard]] static CardFamilies of(const QList<Card> &cards);
};
