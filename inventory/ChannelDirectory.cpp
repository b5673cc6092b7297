#include "inventory/ChannelDirectory.h"

#include "channels/BistChan.h"
#include "channels/CmbrChan.h"
#include "channels/DmdChan.h"
#include "channels/RcvrChan.h"
#include "channels/SpectralChan.h"
#include "channels/TapeChan.h"
#include "channels/TmoipCard.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Route
{
    QLatin1StringView letters;
    int highestNumber;
    const QMetaObject *channelClass;
};

const auto &routes()
{
    static const std::array table{
        Route{ RcvrChan::ChanType, 2, &RcvrChan::staticMetaObject },
        Route{ CmbrChan::ChanType, 1, &CmbrChan::staticMetaObject },
        Route{ DmdChan::ChanType, 3, &DmdChan::staticMetaObject },
        Route{ TapeChan::ChanType, 1, &TapeChan::staticMetaObject },
        Route{ SpectralChan::ChanType, 3, &SpectralChan::staticMetaObject },
        Route{ BistChan::ChanType, 1, &BistChan::staticMetaObject },
    };
    return table;
}

/// Position that the address means within its kind, from 0; -1 if the address is not of this route.
int positionIn(const Route &route, const QString &address)
{
    if (address.size() != route.letters.size() + 1 || !address.startsWith(route.letters))
        return -1;
    const int position = address.back().unicode() - u'1';
    return position < route.highestNumber ? position : -1;
}

} // namespace

Channel *ChannelDirectory::at(const QString &address) const
{
    if (address.startsWith(TmoipCard::ChanType))
        return ofTmoip(address);
    const auto channel = std::find_if(m_channels.begin(), m_channels.end(),
                                      [&address](const Channel *c) { return c->address() == address; });
    return channel != m_channels.end() ? *channel : atPosition(address);
}

Channel *ChannelDirectory::atPosition(const QString &address) const
{
    for (const Route &route : routes()) {
        int position = positionIn(route, address);
        if (position < 0)
            continue;
        for (Channel *channel : m_channels) {
            if (channel->metaObject() == route.channelClass && position-- == 0)
                return channel;
        }
    }
    return nullptr;
}

/// The part of the address behind "-" means the card itself or one of its streams; without it, the card.
Channel *ChannelDirectory::ofTmoip(const QString &address) const
{
    const QList<TmoipCard *> cards = all<TmoipCard>();
    const QString number = address.section(u'-', 0, 0).sliced(TmoipCard::ChanType.size());
    const QString subAddress = address.contains(u'-') ? address.section(u'-', 1) : u"0"_s;
    const auto named =
        std::ranges::find_if(cards, [&number](const TmoipCard *card) { return card->getChannel() == number; });
    // Anything else that begins with the first card's address is for that card.
    const qsizetype position = number.startsWith(u'1') ? 0 : number.toInt() - 1;
    TmoipCard *const card = named != cards.end() ? *named : cards.value(position);
    return card ? card->target(subAddress) : nullptr;
}
