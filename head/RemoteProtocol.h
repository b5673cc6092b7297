#pragma once

#include "head/ClientProtocol.h"

class RcvdRemoteCmdQueueReader;
class TxmtRemoteCmdQueueReader;

/// The protocol of the remote link: the client queries and sets, gets changed settings, and answers the head's
/// presence query.
class RemoteProtocol : public ClientProtocol
{
    Q_OBJECT

public:
    RemoteProtocol(LinkPort &port, ChannelLink &link);
    ~RemoteProtocol() override;

    [[nodiscard]] const TxmtRemoteCmdQueueReader *transmitter() const { return m_transmitter.get(); }
    [[nodiscard]] const RcvdRemoteCmdQueueReader *dispatcher() const { return m_dispatcher; }
    [[nodiscard]] bool isClientHeldBack() const override;
    void serve(Channel *channel) override;

Q_SIGNALS:
    /// For the dispatcher: a message of the client, or one of the head that has ended.
    void received(RemoteCommand *message);

protected:
    void process(const QByteArray &frame) override;
    void handleTimedOut(std::unique_ptr<RemoteCommand> message) override;

private:
    std::unique_ptr<TxmtRemoteCmdQueueReader> m_transmitter;
    RcvdRemoteCmdQueueReader *m_dispatcher;
};
