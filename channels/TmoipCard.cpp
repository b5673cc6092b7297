#include "channels/TmoipCard.h"

#include "channels/TmoipChan.h"

using namespace Qt::StringLiterals;

TmoipCard::TmoipCard(QObject *parent, const QString &channel, ChannelLink *link)
    : Channel(parent, channel, ChanType + channel + "-0"_L1, link, kCatalogue)
{
    for (const QString &key : { u"1"_s, u"2"_s, u"3"_s })
        m_streams.insert(key, new TmoipChan(key, this, ChanType + channel, link));
}

Channel *TmoipCard::target(const QString &subAddress)
{
    return subAddress == "0"_L1 ? this : static_cast<Channel *>(m_streams.value(subAddress));
}

QStringList TmoipCard::addresses() const
{
    QStringList all = Channel::addresses();
    for (const TmoipChan *stream : m_streams)
        all += stream->address();
    return all;
}

void TmoipCard::setSPCRemote(ChannelLink *remoteLink)
{
    Channel::setSPCRemote(remoteLink);
    for (TmoipChan *stream : std::as_const(m_streams))
        stream->setSPCRemote(remoteLink);
}

void TmoipCard::setSPCRemoteEyeAndStatus(ChannelLink *remoteLink)
{
    Channel::setSPCRemoteEyeAndStatus(remoteLink);
    for (TmoipChan *stream : std::as_const(m_streams))
        stream->setSPCRemoteEyeAndStatus(remoteLink);
}

bool setFlow(const QString &value, bool &flow)
{
    flow = value.toInt() == 1;
    return flow;
}
