#include "link/SerialPortController.h"

#include "channels/TmoipCard.h"
#include "channels/UniversalChan.h"
#include "inventory/Discovery.h"
#include "link/EyeConstData.h"
#include "link/EyeConstDataQueueReader.h"
#include "link/LinkGuard.h"
#include "link/LinkLog.h"
#include "link/RcvdCmdQueueReader.h"
#include "link/RcvdRemoteCmdQueueReader.h"
#include "link/SerialDevices.h"
#include "link/SerialPortReader.h"
#include "link/TxmtCmdQueueReader.h"
#include "link/TxmtRemoteCmdQueueReader.h"
#include "link/TxmtRemoteEyeAndStatusCmdQueueReader.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QMessageBox>
#include <QThread>

#include <sys/ioctl.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kSpectralStartupSeconds = 2;
constexpr qint64 kReadBufferSize = 4096;
constexpr qint64 kFullPort = 16 * 1024; ///< bytes
constexpr std::size_t kMaxAnswers = 256;

QByteArray reportsOffRequest()
{
    return StandardCommand(nullptr, UniversalChan::Address, UniversalChan::Commands::TRON, u"OFF"_s,
                           StandardCommand::Created, StandardCommand::Set, 0)
        .commandBytes();
}

} // namespace

SerialPortController::SerialPortController(QObject *parent, PORT_TYPE type, const QString &systemIdentifier)
    : QObject(parent)
    , m_portType(type)
    , m_guard(std::make_unique<LinkGuard>(&m_port, this))
{
    m_timeOutTmr.setSingleShot(true);
    if (isStandardLink()) {
        const int seconds =
            m_portType == COMMAND_LINK ? SerialDevices::commandLinkStartupSeconds() : kSpectralStartupSeconds;
        m_discovery = std::make_unique<Discovery>(this, systemIdentifier, seconds);
    }
    createWorkers();
    connectGuard();
    configurePort();
    openPort();
}

SerialPortController::~SerialPortController()
{
    // Messages on their way to the receive worker belong to nobody else: let it delete them.
    m_ending = true;
    if (m_receiveWorker)
        QCoreApplication::sendPostedEvents(m_receiveWorker.get(), QEvent::MetaCall);
    delete m_openFailureBox;
}

void SerialPortController::createWorkers()
{
    switch (m_portType) {
    case COMMAND_LINK:
    case SPECTRAL_LINK:
        createStandardWorkers();
        break;
    case REMOTE_LINK:
        createRemoteWorkers();
        break;
    case REMOTE_EYE_AND_STATUS_LINK:
        createRemoteEyeAndStatusWorkers();
        break;
    case EYE_CONST_LINK:
        createEyeConstWorkers();
        break;
    }
}

void SerialPortController::createStandardWorkers()
{
    qRegisterMetaType<StandardCommand>("StandardCommand");
    auto reader = std::make_unique<SerialPortReader>(nullptr, this, &m_port);
    auto transmitter = std::make_unique<TxmtCmdQueueReader>(nullptr, this);
    auto dispatcher = std::make_unique<RcvdCmdQueueReader>(nullptr, this);

    connect(this, &SerialPortController::TrnsmtCmd, transmitter.get(), &TxmtCmdQueueReader::CheckTxmtCmdQueue,
            Qt::QueuedConnection);
    connect(this, &SerialPortController::RcvdCmd, dispatcher.get(), &RcvdCmdQueueReader::CheckRcvdCmdQueue,
            Qt::QueuedConnection);
    connect(&m_port, &QSerialPort::readyRead, reader.get(), &SerialPortReader::ReadPort);
    connect(&m_timeOutTmr, &QTimer::timeout, this, &SerialPortController::TimeOutTmr_Tick, Qt::QueuedConnection);

    m_rcvdCmdQueueReader = dispatcher.get();
    m_reader = std::move(reader);
    m_transmitWorker = std::move(transmitter);
    m_receiveWorker = std::move(dispatcher);
}

void SerialPortController::createRemoteWorkers()
{
    qRegisterMetaType<RemoteCommand>("RemoteCommand");
    auto reader = std::make_unique<SerialPortReader>(nullptr, this, &m_port);
    auto transmitter = std::make_unique<TxmtRemoteCmdQueueReader>(nullptr, this);
    auto dispatcher = std::make_unique<RcvdRemoteCmdQueueReader>(nullptr, this);

    connect(this, &SerialPortController::TrnsmtRemoteCmd, transmitter.get(),
            &TxmtRemoteCmdQueueReader::CheckTxmtRemoteCmdQueue, Qt::QueuedConnection);
    connect(this, &SerialPortController::RcvdRemoteCmd, dispatcher.get(),
            &RcvdRemoteCmdQueueReader::CheckRcvdRemoteCmdQueue, Qt::QueuedConnection);
    connect(&m_port, &QSerialPort::readyRead, reader.get(), &SerialPortReader::ReadPort);
    connect(&m_port, &QSerialPort::bytesWritten, this, &SerialPortController::EmitTrnsmtRemoteCmd);
    connect(&m_timeOutTmr, &QTimer::timeout, this, &SerialPortController::TimeOutTmrRemote_Tick, Qt::QueuedConnection);

    m_rcvdRemoteCmdQueueReader = dispatcher.get();
    m_reader = std::move(reader);
    m_transmitWorker = std::move(transmitter);
    m_receiveWorker = std::move(dispatcher);
}

void SerialPortController::createRemoteEyeAndStatusWorkers()
{
    qRegisterMetaType<RemoteCommand>("RemoteCommand");
    auto transmitter = std::make_unique<TxmtRemoteEyeAndStatusCmdQueueReader>(nullptr, this);

    connect(this, &SerialPortController::TrnsmtRemoteEyeAndStatusCmd, transmitter.get(),
            &TxmtRemoteEyeAndStatusCmdQueueReader::CheckTxmtRemoteEyeAndStatusCmdQueue, Qt::QueuedConnection);
    connect(&m_port, &QSerialPort::bytesWritten, this, &SerialPortController::EmitTrnsmtRemoteEyeAndStatusCmd);
    connect(&m_timeOutTmr, &QTimer::timeout, this, &SerialPortController::TimeOutTmrRemoteEyeAndStatus_Tick,
            Qt::QueuedConnection);

    m_transmitWorker = std::move(transmitter);
}

void SerialPortController::createEyeConstWorkers()
{
    qRegisterMetaType<EyeConstData>("EyeConstData");
    // The signal's header only declares the class, so a queued connection finds the pointer's type by name alone.
    qRegisterMetaType<EyeConstData *>("EyeConstData*");
    auto reader = std::make_unique<SerialPortReader>(nullptr, this, &m_port);
    auto dispatcher = std::make_unique<EyeConstDataQueueReader>(nullptr, this);

    connect(this, &SerialPortController::RcvdEyeConstData, dispatcher.get(),
            &EyeConstDataQueueReader::CheckEyeConstDataQueue, Qt::QueuedConnection);
    connect(&m_port, &QSerialPort::readyRead, reader.get(), &SerialPortReader::ReadPort);

    m_eyeConstDataQueueReader = dispatcher.get();
    m_reader = std::move(reader);
    m_receiveWorker = std::move(dispatcher);
}

void SerialPortController::configurePort()
{
    const bool legacyBoard = QCoreApplication::arguments().contains(u"-legacyboard"_s);
    m_port.setPortName(SerialDevices::path(m_portType, legacyBoard));
    m_port.setFlowControl(QSerialPort::NoFlowControl);
    m_port.setParity(QSerialPort::NoParity);
    m_port.setDataBits(QSerialPort::Data8);
    m_port.setStopBits(QSerialPort::OneStop);
    m_port.setBaudRate(921600);
    // What is not read there has to stay with its sender.
    if (!isStandardLink())
        m_port.setReadBufferSize(kReadBufferSize);
}

void SerialPortController::openPort()
{
    if (m_port.open(QIODevice::ReadWrite)) {
        qCInfo(lcLink) << "opened" << m_port.portName();
        m_guard->watch();
        noteOpened();
        return;
    }
    qCInfo(lcLink) << "cannot open" << m_port.portName() << m_port.errorString();
    m_guard->await();
    showOpenFailure();
}

/// A chassis that went on reporting for an earlier run is to wait until its channels are known.
void SerialPortController::noteOpened()
{
    m_hasOpened = true;
    if (m_portType == COMMAND_LINK)
        WriteToPort(0, reportsOffRequest());
}

void SerialPortController::showOpenFailure()
{
    const QString text = m_portType == EYE_CONST_LINK ? u"%1 Comm Port Won't Open"_s : u"Can't Open %1"_s;
    m_openFailureBox = new QMessageBox;
    m_openFailureBox->setAttribute(Qt::WA_DeleteOnClose);
    m_openFailureBox->setText(text.arg(m_port.portName()));
    connect(m_openFailureBox, &QDialog::finished, this, &SerialPortController::OpenFailureAcknowledged);
    m_openFailureBox->open();
}

void SerialPortController::connectGuard()
{
    connect(m_guard.get(), &LinkGuard::lost, this, &SerialPortController::linkLost);
    connect(m_guard.get(), &LinkGuard::found, this, &SerialPortController::linkFound);
    if (m_reader)
        connect(m_guard.get(), &LinkGuard::strayError, m_reader.get(), &SerialPortReader::ReadPort);
}

bool SerialPortController::isLost() const { return m_guard->isLost(); }

LinkStatus SerialPortController::status() const
{
    LinkStatus status = m_status;
    status.silentMs = m_lastMessage.isValid() ? m_lastMessage.elapsed() : -1;
    if (!m_hasOpened)
        status.state = LinkStatus::State::NotPresent;
    else if (isLost())
        status.state = LinkStatus::State::Lost;
    else if (m_discovery)
        m_discovery->report(status);
    else
        status.state = LinkStatus::State::Live;
    return status;
}

bool SerialPortController::isStale() const { return isLost() || (m_discovery && m_discovery->isStale()); }

void SerialPortController::noteReport() { m_discovery->noteReport(); }

void SerialPortController::noteEnd(const StandardCommand &command)
{
    const bool isRefused = command.status() == StandardCommand::Failed;
    const bool isUnanswered = command.status() == StandardCommand::TimedOut;
    m_status.refusals += isRefused;
    m_status.timeOuts += isUnanswered;
    const bool isAwaited =
        command.type() == StandardCommand::Set || command.mnemonic() == UniversalChan::Commands::PLIST;
    if (isAwaited && (isRefused || isUnanswered))
        Q_EMIT RequestFailed(command.address(), command.mnemonic(), isRefused);
    m_discovery->noteEnd(command);
}

void SerialPortController::noteSet(const StandardCommand &set) { m_discovery->check().noteSet(set); }

bool SerialPortController::isInDoubt(const StandardCommand &set) const { return m_discovery->check().isInDoubt(set); }

void SerialPortController::noteStrayAnswer() { m_discovery->check().noteStrayAnswer(); }

void SerialPortController::noteUnsolicited(const StandardCommand &message)
{
    m_discovery->check().noteUnsolicited(message);
}

void SerialPortController::linkLost()
{
    m_status.lostSince = QTime::currentTime();
    m_timeOutTmr.stop();
    if (m_reader)
        m_reader->reset();
    if (m_discovery)
        m_discovery->pause();
    timeOutAll();
}

void SerialPortController::linkFound()
{
    if (!m_hasOpened)
        noteOpened();
    if (m_openFailureBox)
        m_openFailureBox->accept();
    if (m_discovery)
        m_discovery->resume();
}

void SerialPortController::timeOutAll()
{
    if (m_txmtCmdQueue.isAwaitingAnswer())
        timeOut(m_txmtCmdQueue.inFlight());
    for (auto &command : m_txmtCmdQueue.takeWaiting())
        timeOut(command.release());
    m_txmtCmdQueue.setReadyToSend();

    if (m_txmtRemoteCmdQueue.isAwaitingAnswer())
        timeOut(m_txmtRemoteCmdQueue.takeInFlight());
    for (auto &message : m_txmtRemoteCmdQueue.takeWaiting())
        timeOut(message.release());
    m_txmtRemoteCmdQueue.setReadyToSend();
}

/// The marker has no end but its own: it comes again with the repeated reading of the settings.
void SerialPortController::timeOut(StandardCommand *command)
{
    if (command->type() == StandardCommand::Marker && isLost()) {
        m_txmtCmdQueue.release(command);
        delete command;
        return;
    }
    command->setStatus(StandardCommand::TimedOut);
    if (command->type() != StandardCommand::Marker) {
        qCInfo(lcLink) << m_port.portName() << "timed out:" << command->address() << command->mnemonic();
        noteEnd(*command);
    }
    EmitRcvdCmd(command);
}

/// Who asked the client something is told that there was no answer; nobody waits for the end of anything else.
void SerialPortController::timeOut(RemoteCommand *message)
{
    std::unique_ptr<RemoteCommand> owned(message);
    message->setTimedOut();
    if (m_portType == REMOTE_LINK &&
        (message->type() == RemoteCommand::Query || message->type() == RemoteCommand::Value))
        EmitRcvdRemoteCmd(owned.release());
}

void SerialPortController::AddCmdToTxmtCmdQueue(StandardCommand *command)
{
    if (isLost()) {
        timeOut(command);
        return;
    }
    // A set never waits behind a newer one.
    const bool isOfReading =
        command->type() == StandardCommand::Query || command->mnemonic() == UniversalChan::Commands::TRON;
    if (m_discovery->readsInBackground() && isOfReading) {
        queueInBackground(command);
        return;
    }
    m_txmtCmdQueue.append(command);
    EmitTrnsmtCmd();
}

void SerialPortController::queueInBackground(StandardCommand *query)
{
    if (isLost()) {
        timeOut(query);
        return;
    }
    query->setInBackground();
    m_txmtCmdQueue.appendInBackground(query);
    EmitTrnsmtCmd();
}

void SerialPortController::dropBackground()
{
    for (auto &query : m_txmtCmdQueue.takeBackground()) {
        query->setStatus(StandardCommand::TimedOut);
        EmitRcvdCmd(query.release());
    }
}

void SerialPortController::AddCmdToTxmtRemoteCmdQueue(RemoteCommand *command)
{
    appendForClient(command);
    EmitTrnsmtRemoteCmd();
}

void SerialPortController::AddCmdToTxmtRemoteEyeAndStatusCmdQueue(RemoteCommand *command)
{
    appendForClient(command);
    EmitTrnsmtRemoteEyeAndStatusCmd();
}

void SerialPortController::appendForClient(RemoteCommand *command)
{
    if (isLost()) {
        timeOut(command);
        return;
    }
    // One message goes in about a millisecond, so a port that is read can be too slow as well.
    if (isPortFull() || m_txmtRemoteCmdQueue.waitingCount() >= RemoteTransmitQueue::kMaxMessages)
        m_txmtRemoteCmdQueue.appendForSlowClient(command);
    else
        m_txmtRemoteCmdQueue.append(command);
}

bool SerialPortController::isPortFull() const { return m_port.bytesToWrite() > kFullPort; }

bool SerialPortController::isClientHeldBack() const
{
    return m_txmtRemoteCmdQueue.answerCount() >= kMaxAnswers || m_rcvdRemoteCmdQueueReader->isClientAhead();
}

void SerialPortController::WriteToPort(int timeOutMs, const QByteArray &bytes)
{
    StartTimeOutTmr(timeOutMs);
    if (m_port.isOpen()) {
        qCDebug(lcTraffic) << m_port.portName() << ">" << bytes;
        m_port.write(bytes);
    }
}

void SerialPortController::writeFinalReportsOff(int timeOutMs)
{
    if (!m_port.isOpen())
        return;
    WriteToPort(0, reportsOffRequest());
    const QDeadlineTimer deadline(timeOutMs);
    while (m_port.bytesToWrite() > 0 && !deadline.hasExpired()) {
        if (!m_port.waitForBytesWritten(static_cast<int>(deadline.remainingTime())))
            return;
    }
    // Closing puts the line speed back at once, so what the kernel still holds has to be out by then.
    int held = 0;
    while (::ioctl(m_port.handle(), TIOCOUTQ, &held) == 0 && held > 0 && !deadline.hasExpired())
        QThread::msleep(1);
}

void SerialPortController::StartTimeOutTmr(int ms)
{
    if (ms != 0)
        m_timeOutTmr.start(ms);
}

void SerialPortController::TimeOutTmr_Tick()
{
    // A running timer belongs to a command sent after this tick was queued.
    if (m_timeOutTmr.isActive() || !m_txmtCmdQueue.isAwaitingAnswer())
        return;
    timeOut(m_txmtCmdQueue.inFlight());
    m_txmtCmdQueue.setReadyToSend();
    EmitTrnsmtCmd();
}

void SerialPortController::TimeOutTmrRemote_Tick()
{
    if (finishRemoteMessage())
        EmitTrnsmtRemoteCmd();
}

void SerialPortController::TimeOutTmrRemoteEyeAndStatus_Tick()
{
    if (finishRemoteMessage())
        EmitTrnsmtRemoteEyeAndStatusCmd();
}

bool SerialPortController::finishRemoteMessage()
{
    if (m_timeOutTmr.isActive() || !m_txmtRemoteCmdQueue.isAwaitingAnswer())
        return false;
    timeOut(m_txmtRemoteCmdQueue.takeInFlight());
    m_txmtRemoteCmdQueue.setReadyToSend();
    return true;
}

// Inventory

void SerialPortController::StartEstablishCommTmr(int ms, QLabel *label) { m_discovery->start(ms, label); }

void SerialPortController::StopEstablishCommTmr() { m_discovery->stop(); }

void SerialPortController::EstablishCommTmr_Tick() { m_discovery->tick(); }

void SerialPortController::ProcessCmd(const StandardCommand &command) { m_discovery->process(command); }

void SerialPortController::processCardList(const QString &cardList) { m_discovery->processCardList(cardList); }

void SerialPortController::noteCardList(const QString &cardList) { m_discovery->noteCardList(cardList); }

void SerialPortController::ConsolidateCardList() { m_discovery->consolidateCards(); }

void SerialPortController::GenerateChannelList(const QString &cardList) { m_discovery->createChannels(cardList); }

bool SerialPortController::generateTmoipCard(const QString &name)
{
    return m_portType == COMMAND_LINK && m_discovery->createTmoipCard(name);
}

const QList<Card> &SerialPortController::cards() const { return m_discovery->cards(); }

QStringList SerialPortController::cardInfoStrings() const
{
    QStringList texts;
    for (const Card &card : cards())
        texts += card.GetFormattedCardInfoString();
    return texts;
}

void SerialPortController::GenerateChannelList(SerialPortController *source)
{
    for (Channel *channel : source->channels())
        takeOver(channel);
}

void SerialPortController::addTmoipCard(TmoipCard *card) { takeOver(card); }

void SerialPortController::takeOver(Channel *channel)
{
    if (m_portType == REMOTE_LINK)
        channel->setSPCRemote(this);
    else if (m_portType == REMOTE_EYE_AND_STATUS_LINK)
        channel->setSPCRemoteEyeAndStatus(this);
    addChannel(channel);
}

void SerialPortController::addChannel(Channel *channel)
{
    m_chanList.append(channel);
    if (m_rcvdCmdQueueReader)
        m_rcvdCmdQueueReader->SetChanLists();
    if (m_rcvdRemoteCmdQueueReader)
        m_rcvdRemoteCmdQueueReader->SetChanLists();
    if (m_eyeConstDataQueueReader)
        m_eyeConstDataQueueReader->SetChanLists();
}

void SerialPortController::setSystemChannel(UniversalChan *channel) { m_rcvdCmdQueueReader->setSystemChannel(channel); }
