#include "head/RemoteEyeAndStatusProtocol.h"

#include "channels/Channel.h"
#include "head/TxmtRemoteEyeAndStatusCmdQueueReader.h"

RemoteEyeAndStatusProtocol::RemoteEyeAndStatusProtocol(LinkPort &port, ChannelLink &link)
    : ClientProtocol(port, link)
    , m_transmitter(std::make_unique<TxmtRemoteEyeAndStatusCmdQueueReader>(port, queue()))
{
}

RemoteEyeAndStatusProtocol::~RemoteEyeAndStatusProtocol() = default;

void RemoteEyeAndStatusProtocol::serve(Channel *channel) { channel->setSPCRemoteEyeAndStatus(&link()); }
