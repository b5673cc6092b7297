#include "head/StandardProtocol.h"

#include "head/RcvdCmdQueueReader.h"
#include "head/TxmtCmdQueueReader.h"
#include "link/ChannelLink.h"
#include "link/LinkLog.h"

#include <memory>

StandardProtocol::StandardProtocol(LinkPort &port, ChannelLink &link)
    : LinkProtocol(port)
    , m_transmitter(std::make_unique<TxmtCmdQueueReader>(port, m_queue))
{
    qRegisterMetaType<StandardCommand>("StandardCommand");
    auto dispatcher = std::make_unique<RcvdCmdQueueReader>(link, m_queue);
    m_dispatcher = dispatcher.get();
    setDispatcher(std::move(dispatcher));
    setReader(std::make_unique<SerialPortReader>(&port.port(), FrameDecoder(FrameDecoder::kCr),
                                                 [this](const QByteArray &frame) { handleFrame(frame); }));
}

StandardProtocol::~StandardProtocol() = default;

void StandardProtocol::setSystemChannel(UniversalChan *channel) { m_dispatcher->setSystemChannel(channel); }

void StandardProtocol::append(StandardCommand *command)
{
    if (port().isLost()) {
        timeOut(command);
        return;
    }
    if (command->priority() == StandardCommand::Priority::Background)
        m_queue.appendInBackground(command);
    else
        m_queue.append(command);
    Q_EMIT transmissionDue();
}

void StandardProtocol::dropBackground()
{
    for (auto &query : m_queue.takeBackground()) {
        query->setStatus(StandardCommand::TimedOut);
        Q_EMIT received(query.release());
    }
}

// Received frames

void StandardProtocol::process(const QByteArray &frame)
{
    if (frame.size() == 1)
        handleAcknowledgement(FrameText::decode(frame));
    else
        handleMessage(FrameText::decode(frame));
}

void StandardProtocol::handleAcknowledgement(const FrameText::Decoded &frame)
{
    const QChar byte = frame.text.front();
    const bool isAck = byte == StandardCommand::kAck;
    const bool isNak = byte == StandardCommand::kNak;
    if (m_queue.isAwaitingAnswer() && (isNak || (isAck && m_queue.inFlight()->type() == StandardCommand::Set))) {
        completeInFlight(frame);
        return;
    }
    if (isAck || isNak)
        Q_EMIT strayAnswer();
    Q_EMIT received(new StandardCommand(nullptr, frame.text, StandardCommand::Unparsed, StandardCommand::Set));
}

void StandardProtocol::handleMessage(const FrameText::Decoded &frame)
{
    auto message = std::make_unique<StandardCommand>(StandardCommand::fromCard(frame.text));
    message->setLatin1(frame.isLatin1);
    if (m_queue.isAwaitingAnswer() && m_queue.inFlight()->isAnsweredBy(*message)) {
        completeInFlight(frame);
        return;
    }
    Q_EMIT unsolicited(*message);
    Q_EMIT received(message.release());
}

void StandardProtocol::completeInFlight(const FrameText::Decoded &frame)
{
    StandardCommand *command = m_queue.inFlight();
    port().timeOutTimer().stop();
    command->ResponseReceived(frame.text);
    if (command->type() == StandardCommand::Query)
        command->setLatin1(frame.isLatin1);
    Q_EMIT ended(*command);
    Q_EMIT received(command);
    proceed();
}

void StandardProtocol::proceed()
{
    m_queue.setReadyToSend();
    Q_EMIT transmissionDue();
}

// Time-outs

void StandardProtocol::timeOutInFlight()
{
    // A running timer belongs to a command sent after this time-out was queued.
    if (port().timeOutTimer().isActive() || !m_queue.isAwaitingAnswer())
        return;
    timeOut(m_queue.inFlight());
    proceed();
}

void StandardProtocol::timeOutAll()
{
    if (m_queue.isAwaitingAnswer())
        timeOut(m_queue.inFlight());
    for (auto &command : m_queue.takeWaiting())
        timeOut(command.release());
    m_queue.setReadyToSend();
}

/// A marker that a lost link takes along does not end; the re-read of the settings queues another one.
void StandardProtocol::timeOut(StandardCommand *command)
{
    if (command->type() == StandardCommand::Marker && port().isLost()) {
        m_queue.release(command);
        delete command;
        return;
    }
    command->setStatus(StandardCommand::TimedOut);
    if (command->type() != StandardCommand::Marker) {
        qCInfo(lcLink) << port().port().portName() << "timed out:" << command->address() << command->mnemonic();
        Q_EMIT ended(*command);
    }
    Q_EMIT received(command);
}
