#include "link/SerialPortReader.h"

#include "link/EyeConstData.h"
#include "link/LinkLog.h"
#include "link/SerialPortController.h"

#include <QSerialPort>

#include <memory>

namespace {

// Bounds for the remote client. A frame of it is a line of text; one that is longer is rubbish.
constexpr qsizetype kMaxClientFrameSize = 4096;
constexpr qint64 kClientPiece = 256;
constexpr int kHeldBackMs = 2;

FrameDecoder decoderFor(SerialPortController::PORT_TYPE type)
{
    if (type == SerialPortController::EYE_CONST_LINK)
        return FrameDecoder(FrameDecoder::kEot);
    if (type == SerialPortController::REMOTE_LINK)
        return FrameDecoder(FrameDecoder::kCr, kMaxClientFrameSize);
    return FrameDecoder(FrameDecoder::kCr);
}

} // namespace

SerialPortReader::SerialPortReader(QObject *parent, SerialPortController *controller, QSerialPort *port)
    : QObject(parent)
    , m_controller(controller)
    , m_port(port)
    , m_decoder(decoderFor(controller->portType()))
{
    m_readAgainTmr.setSingleShot(true);
    connect(&m_readAgainTmr, &QTimer::timeout, this, &SerialPortReader::ReadPort);
}

void SerialPortReader::ReadPort()
{
    if (!m_port->isOpen())
        return; // lost since this was due
    if (m_controller->portType() == SerialPortController::REMOTE_LINK)
        readClient();
    else
        m_decoder.feed(m_port->readAll(), [this](const QByteArray &frame) { HandleFrame(frame); });
}

/// Runs behind the events that the message before has caused, so it sees what they have done.
void SerialPortReader::readClient()
{
    if (m_clientFrames.isEmpty())
        m_decoder.feed(m_port->read(kClientPiece), [this](const QByteArray &frame) { m_clientFrames.enqueue(frame); });
    const bool isHeldBack = m_controller->isClientHeldBack();
    if (!isHeldBack && !m_clientFrames.isEmpty())
        HandleFrame(m_clientFrames.dequeue());
    if (!m_clientFrames.isEmpty() || m_port->bytesAvailable() > 0)
        m_readAgainTmr.start(isHeldBack ? kHeldBackMs : 0);
}

void SerialPortReader::reset()
{
    m_decoder.reset();
    m_clientFrames.clear();
}

void SerialPortReader::HandleFrame(const QByteArray &frame)
{
    qCDebug(lcTraffic) << m_port->portName() << "<" << frame;
    m_controller->noteMessage();
    switch (m_controller->portType()) {
    case SerialPortController::COMMAND_LINK:
    case SerialPortController::SPECTRAL_LINK:
        HandleStandardCommand(frame);
        break;
    case SerialPortController::EYE_CONST_LINK:
        HandleEyeConstData(frame);
        break;
    case SerialPortController::REMOTE_LINK:
        HandleRemoteCommand(frame);
        break;
    case SerialPortController::REMOTE_EYE_AND_STATUS_LINK:
        break; // only sends
    }
}

void SerialPortReader::HandleRemoteCommand(const QByteArray &frame)
{
    const FrameText::Decoded content = FrameText::decode(frame);
    auto message = std::make_unique<RemoteCommand>(RemoteCommand::fromClient(content.text));
    message->setLatin1(content.isLatin1);
    const bool isAnswer = message->status() == RemoteCommand::Completed || message->status() == RemoteCommand::Failed;
    auto &queue = m_controller->txmtRemoteCmdQueue();
    if (!isAnswer || !queue.isAwaitingAnswer() || !queue.inFlight()->isAboutSameAs(*message)) {
        m_controller->EmitRcvdRemoteCmd(message.release());
        return;
    }
    m_controller->StopTimeOutTmr();
    queue.inFlight()->answeredBy(*message);
    m_controller->EmitRcvdRemoteCmd(queue.inFlight());
    queue.setReadyToSend();
    m_controller->EmitTrnsmtRemoteCmd();
}

void SerialPortReader::HandleEyeConstData(const QByteArray &frame)
{
    if (frame.size() == EyeConstData::kEyeFrameSize || frame.size() == EyeConstData::kSerialDataFrameSize)
        m_controller->EmitRcvdEyeConstData(new EyeConstData(frame));
}

void SerialPortReader::HandleStandardCommand(const QByteArray &frame)
{
    if (frame.size() == 1)
        handleAcknowledgement(FrameText::decode(frame));
    else
        handleMessage(FrameText::decode(frame));
}

void SerialPortReader::handleAcknowledgement(const FrameText::Decoded &frame)
{
    const auto &queue = m_controller->txmtCmdQueue();
    const QChar byte = frame.text.front();
    const bool isAck = byte == StandardCommand::kAck;
    const bool isNak = byte == StandardCommand::kNak;
    if (queue.isAwaitingAnswer() && (isNak || (isAck && queue.inFlight()->type() == StandardCommand::Set))) {
        completeCommandInFlight(frame);
        return;
    }
    if (isAck || isNak)
        m_controller->noteStrayAnswer();
    m_controller->EmitRcvdCmd(
        new StandardCommand(nullptr, frame.text, StandardCommand::Unparsed, StandardCommand::Set));
}

void SerialPortReader::handleMessage(const FrameText::Decoded &frame)
{
    auto message = std::make_unique<StandardCommand>(StandardCommand::fromCard(frame.text));
    message->setLatin1(frame.isLatin1);
    const auto &queue = m_controller->txmtCmdQueue();
    if (queue.isAwaitingAnswer() && queue.inFlight()->isAnsweredBy(*message)) {
        completeCommandInFlight(frame);
        return;
    }
    m_controller->noteUnsolicited(*message);
    m_controller->EmitRcvdCmd(message.release());
}

void SerialPortReader::completeCommandInFlight(const FrameText::Decoded &frame)
{
    StandardCommand *command = m_controller->txmtCmdQueue().inFlight();
    m_controller->StopTimeOutTmr();
    command->ResponseReceived(frame.text);
    if (command->type() == StandardCommand::Query)
        command->setLatin1(frame.isLatin1);
    m_controller->noteEnd(*command);
    m_controller->EmitRcvdCmd(command);
    m_controller->txmtCmdQueue().setReadyToSend();
    m_controller->EmitTrnsmtCmd();
}
