#pragma once

#include "head/LinkProtocol.h"
#include "link/FrameText.h"
#include "link/StandardCommand.h"
#include "link/TransmitQueue.h"

class ChannelLink;
class RcvdCmdQueueReader;
class TxmtCmdQueueReader;
class UniversalChan;

/// The protocol of the command and the spectral link: one command in flight, each with one end.
///
/// Noise, late answers and stray acknowledgements never disturb the command in flight; they are dispatched as
/// unsolicited messages.
class StandardProtocol : public LinkProtocol
{
    Q_OBJECT

public:
    StandardProtocol(LinkPort &port, ChannelLink &link);
    ~StandardProtocol() override;

    [[nodiscard]] TransmitQueue<StandardCommand> &queue() { return m_queue; }
    [[nodiscard]] const TransmitQueue<StandardCommand> &queue() const { return m_queue; }
    [[nodiscard]] std::size_t waitingCount() const override { return m_queue.waitingCount(); }
    [[nodiscard]] const TxmtCmdQueueReader *transmitter() const { return m_transmitter.get(); }
    [[nodiscard]] const RcvdCmdQueueReader *dispatcher() const { return m_dispatcher; }

    /// The channel that gets what comes from the system address.
    void setSystemChannel(UniversalChan *channel);

    /// Queues a command by its priority; while the link is lost it ends as timed out.
    void append(StandardCommand *command);
    /// Ends the waiting commands of the background as timed out, without ended().
    void dropBackground();
    /// The time of the command in flight is over.
    void timeOutInFlight();

Q_SIGNALS:
    /// The next command may be written.
    void transmissionDue();
    /// For the dispatcher: a command that has ended, or an unsolicited message.
    void received(StandardCommand *command);
    /// A command that was queued or in flight has ended; it has not been dispatched yet.
    void ended(const StandardCommand &command);
    /// An acknowledgement that nobody waits for.
    void strayAnswer();
    /// A message that answers no query.
    void unsolicited(const StandardCommand &message);

protected:
    void process(const QByteArray &frame) override;
    void timeOutAll() override;

private:
    void handleAcknowledgement(const FrameText::Decoded &frame);
    void handleMessage(const FrameText::Decoded &frame);
    void completeInFlight(const FrameText::Decoded &frame);
    void timeOut(StandardCommand *command);
    void proceed();

    TransmitQueue<StandardCommand> m_queue;
    std::unique_ptr<TxmtCmdQueueReader> m_transmitter;
    RcvdCmdQueueReader *m_dispatcher;
};
