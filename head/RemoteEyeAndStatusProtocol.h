#pragma once

#include "head/ClientProtocol.h"

class TxmtRemoteEyeAndStatusCmdQueueReader;

/// The protocol of the remote eye-and-status link, which only sends.
class RemoteEyeAndStatusProtocol : public ClientProtocol
{
    Q_OBJECT

public:
    RemoteEyeAndStatusProtocol(LinkPort &port, ChannelLink &link);
    ~RemoteEyeAndStatusProtocol() override;

    [[nodiscard]] const TxmtRemoteEyeAndStatusCmdQueueReader *transmitter() const { return m_transmitter.get(); }
    void serve(Channel *channel) override;

private:
    std::unique_ptr<TxmtRemoteEyeAndStatusCmdQueueReader> m_transmitter;
};
