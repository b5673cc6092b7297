#include "inventory/CardFamilies.h"

#include "inventory/Card.h"

#include <algorithm>
#include <initializer_list>

using namespace Qt::StringLiterals;

CardFamilies CardFamilies::of(const QList<Card> &cards)
{
    const auto anyModelHolds = [&cards](std::initializer_list<QLatin1StringView> pieces) {
        return std::any_of(cards.begin(), cards.end(), [pieces](const Card &card) {
            return std::any_of(pieces.begin(), pieces.end(),
                               [&card](QLatin1StringView piece) { return card.model().contains(piece); });
        });
    };
    return { .hasQLN424Card = anyModelHolds({ "QLN424"_L1 }),
             .hasK412WCard = anyModelHolds({ "K412W"_L1 }),
             .hasQLDXCard = anyModelHolds({ "QLDX203"_L1, "QLDX204"_L1, "QLDX206"_L1, "QLDX208"_L1 }),
             .hasK3050OrK3060Card = anyModelHolds({ "K3050"_L1, "K3060"_L1 }) };
}
