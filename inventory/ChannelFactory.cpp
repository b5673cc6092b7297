#include "inventory/ChannelFactory.h"

#include "channels/BistChan.h"
#include "channels/CmbrChan.h"
#include "channels/DmdChan.h"
#include "channels/RcvrChan.h"
#include "channels/SpectralChan.h"
#include "channels/TapeChan.h"

#include <algorithm>
#include <initializer_list>

using namespace Qt::StringLiterals;

namespace {

using ChannelList = std::vector<std::unique_ptr<Channel>>;

bool holdsAny(const QString &cardList, std::initializer_list<QLatin1StringView> texts)
{
    return std::any_of(texts.begin(), texts.end(),
                       [&cardList](QLatin1StringView text) { return cardList.contains(text); });
}

void addReceivers(ChannelList &channels, const QString &cardList, ChannelLink *link)
{
    if (cardList.contains("0103"_L1) && cardList.contains("0121"_L1))
        channels.push_back(std::make_unique<RcvrChan>(nullptr, u"1"_s, link));
    if (cardList.contains("0104"_L1) && cardList.contains("0122"_L1))
        channels.push_back(std::make_unique<RcvrChan>(nullptr, u"2"_s, link));
}

void addDemodulators(ChannelList &channels, const QString &cardList, ChannelLink *link)
{
    const bool older = holdsAny(cardList, { "K3050"_L1, "K3060"_L1 });
    const auto add = [&](const QString &number, QLatin1StringView olderName,
                         std::initializer_list<QLatin1StringView> entries) {
        if (older ? cardList.contains(olderName) : holdsAny(cardList, entries))
            channels.push_back(std::make_unique<DmdChan>(nullptr, number, link, older));
    };
    add(u"1"_s, "DEMOD1"_L1, { "0101 K412"_L1, "0101 K414V"_L1, "0101 K9V"_L1, "0107 K9V"_L1 });
    add(u"2"_s, "DEMOD2"_L1, { "0102 K412"_L1, "0102 K414V"_L1, "0102 K9V"_L1, "0108 K9V"_L1 });
    add(u"3"_s, "DEMOD3"_L1, { "0109 K412"_L1, "0109 K414V"_L1, "0109 K424V"_L1 });
}

} // namespace

ChannelList ChannelFactory::create(const QString &cardList, ChannelLink *link)
{
    ChannelList channels;
    addReceivers(channels, cardList, link);
    if (holdsAny(cardList, { "0105"_L1, "0109"_L1 }))
        channels.push_back(std::make_unique<CmbrChan>(nullptr, u"1"_s, link));
    addDemodulators(channels, cardList, link);
    if (cardList.contains("0110"_L1))
        channels.push_back(std::make_unique<TapeChan>(nullptr, u"1"_s, link));
    if (cardList.contains("0170"_L1)) {
        for (const QString &number : { u"1"_s, u"2"_s, u"3"_s })
            channels.push_back(std::make_unique<SpectralChan>(nullptr, number, link));
    }
    if (cardList.contains("0136"_L1))
        channels.push_back(std::make_unique<BistChan>(nullptr, u"1"_s, link));
    return channels;
}
