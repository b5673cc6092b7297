#include "inventory/ChannelFactory.h"

#include "channels/RcvrChan.h"

using namespace Qt::StringLiterals;

std::vector<std::unique_ptr<Channel>> ChannelFactory::create(const QString &cardList, SerialPortController *link)
{
    std::vector<std::unique_ptr<Channel>> channels;
    const auto holds = [&cardList](QLatin1StringView text) { return cardList.contains(text); };

    if (holds("0103"_L1) && holds("0121"_L1))
        channels.push_back(std::make_unique<RcvrChan>(nullptr, u"1"_s, link));
    if (holds("0104"_L1) && holds("0122"_L1))
        channels.push_back(std::make_unique<RcvrChan>(nullptr, u"2"_s, link));
    return channels;
}
