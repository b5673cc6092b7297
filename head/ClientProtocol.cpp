#include "head/ClientProtocol.h"

#include <utility>

namespace {

constexpr qint64 kReadBufferSize = 4096; ///< what is not read there has to stay with its sender

} // namespace

ClientProtocol::ClientProtocol(LinkPort &port, ChannelLink &link) : LinkProtocol(port), m_link(link)
{
    qRegisterMetaType<RemoteCommand>("RemoteCommand");
    port.port().setReadBufferSize(kReadBufferSize);
    // A port that was full has room again.
    connect(&port.port(), &QSerialPort::bytesWritten, this, &ClientProtocol::transmissionDue);
}

void ClientProtocol::append(RemoteCommand *message)
{
    if (port().isLost())
        timeOut(std::unique_ptr<RemoteCommand>(message));
    // One message takes about a millisecond, so a client that reads can be too slow as well.
    else if (port().isFull() || m_queue.waitingCount() >= RemoteTransmitQueue::kMaxMessages)
        m_queue.appendForSlowClient(message);
    else
        m_queue.append(message);
    Q_EMIT transmissionDue();
}

void ClientProtocol::process(const QByteArray &frame) { Q_UNUSED(frame) }

void ClientProtocol::timeOutInFlight()
{
    // A running timer belongs to a message sent after this time-out was queued.
    if (port().timeOutTimer().isActive() || !m_queue.isAwaitingAnswer())
        return;
    timeOut(std::unique_ptr<RemoteCommand>(m_queue.takeInFlight()));
    proceed();
}

void ClientProtocol::proceed()
{
    m_queue.setReadyToSend();
    Q_EMIT transmissionDue();
}

void ClientProtocol::timeOutAll()
{
    if (m_queue.isAwaitingAnswer())
        timeOut(std::unique_ptr<RemoteCommand>(m_queue.takeInFlight()));
    for (auto &message : m_queue.takeWaiting())
        timeOut(std::move(message));
    m_queue.setReadyToSend();
}

void ClientProtocol::timeOut(std::unique_ptr<RemoteCommand> message)
{
    message->setTimedOut();
    handleTimedOut(std::move(message));
}

/// Nobody waits for the end of a pushed value.
void ClientProtocol::handleTimedOut(std::unique_ptr<RemoteCommand> message) { message.reset(); }
