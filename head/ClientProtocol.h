#pragma once

#include "head/LinkProtocol.h"
#include "link/RemoteTransmitQueue.h"

#include <memory>

class ChannelLink;

/// What the two links to the remote client have in common: a bounded transmit queue with one message in flight.
class ClientProtocol : public LinkProtocol
{
    Q_OBJECT

public:
    [[nodiscard]] RemoteTransmitQueue &queue() { return m_queue; }
    [[nodiscard]] const RemoteTransmitQueue &queue() const { return m_queue; }
    [[nodiscard]] std::size_t waitingCount() const override { return m_queue.waitingCount(); }

    /// Queues a message; while the link is lost it ends as timed out.
    void append(RemoteCommand *message);
    /// The time of the message in flight is over.
    void timeOutInFlight();
    /// Whether what the client sends stays unread until what it caused before is on its way.
    [[nodiscard]] virtual bool isClientHeldBack() const { return false; }

Q_SIGNALS:
    /// The next message may be written.
    void transmissionDue();

protected:
    ClientProtocol(LinkPort &port, ChannelLink &link);

    [[nodiscard]] ChannelLink &link() const { return m_link; }
    void process(const QByteArray &frame) override;
    void timeOutAll() override;
    void proceed();
    /// Takes a message of the head whose time is over.
    virtual void handleTimedOut(std::unique_ptr<RemoteCommand> message);

private:
    void timeOut(std::unique_ptr<RemoteCommand> message);

    ChannelLink &m_link;
    RemoteTransmitQueue m_queue;
};
