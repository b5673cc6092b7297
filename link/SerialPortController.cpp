#include "link/SerialPortController.h"

#include "channels/TmoipCard.h"
#include "channels/TmoipChan.h"
#include "channels/UniversalChan.h"
#include "inventory/Card.h"
#include "inventory/CardList.h"
#include "inventory/ChannelFactory.h"
#include "link/EyeConstData.h"
#include "link/EyeConstDataQueueReader.h"
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
#include <QLabel>
#include <QMessageBox>
#include <QThread>

#include <algorithm>
#include <utility>

#include <sys/ioctl.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kSpectralStartupSeconds = 2;
constexpr int kVersionRetrySeconds = 2; ///< ticks between two rounds of version queries, less one
constexpr int kCardListRetryMs = 3000;
constexpr qint64 kReadBufferSize = 4096;
constexpr qint64 kFullPort = 16 * 1024; ///< bytes
constexpr std::size_t kMaxAnswers = 256;

QByteArray reportsOffRequest()
{
    return StandardCommand(nullptr, UniversalChan::Address, UniversalChan::Commands::TRON, u"OFF"_s,
                           StandardCommand::Created, StandardCommand::Set, 0)
        .commandText()
        .toLocal8Bit();
}

} // namespace

SerialPortController::SerialPortController(QObject *parent, PORT_TYPE type, const QString &systemIdentifier)
    : QObject(parent)
    , m_portType(type)
    , m_systemIdentifier(systemIdentifier)
    , m_cards(std::make_unique<QList<Card>>())
{
    m_timeOutTmr.setSingleShot(true);
    if (m_portType == COMMAND_LINK)
        m_startupCountdown = SerialDevices::commandLinkStartupSeconds();
    else if (m_portType == SPECTRAL_LINK)
        m_startupCountdown = kSpectralStartupSeconds;

    createWorkers();
    configurePort();
    openPort();
    if (m_portType == COMMAND_LINK)
        WriteToPort(0, reportsOffRequest());
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
    connect(&m_establishCommTmr, &QTimer::timeout, this, &SerialPortController::EstablishCommTmr_Tick,
            Qt::QueuedConnection);
    connect(&m_cardListTmr, &QTimer::timeout, this, &SerialPortController::requestCardList);

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
        return;
    }
    qCInfo(lcLink) << "cannot open" << m_port.portName() << m_port.errorString();
    const QString text = m_portType == EYE_CONST_LINK ? u"%1 Comm Port Won't Open"_s : u"Can't Open %1"_s;
    m_openFailureBox = new QMessageBox;
    m_openFailureBox->setAttribute(Qt::WA_DeleteOnClose);
    m_openFailureBox->setText(text.arg(m_port.portName()));
    connect(m_openFailureBox, &QDialog::finished, this, &SerialPortController::OpenFailureAcknowledged);
    m_openFailureBox->open();
}

void SerialPortController::AddCmdToTxmtCmdQueue(StandardCommand *command)
{
    m_txmtCmdQueue.append(command);
    EmitTrnsmtCmd();
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
    StandardCommand *command = m_txmtCmdQueue.inFlight();
    command->setStatus(StandardCommand::TimedOut);
    qCInfo(lcLink) << m_port.portName() << "timed out:" << command->address() << command->mnemonic();
    EmitRcvdCmd(command);
    m_txmtCmdQueue.setReadyToSend();
    EmitTrnsmtCmd();
}

void SerialPortController::TimeOutTmrRemote_Tick()
{
    std::unique_ptr<RemoteCommand> message(takeTimedOutRemoteMessage());
    if (!message)
        return;
    if (message->type() == RemoteCommand::Query || message->type() == RemoteCommand::Value)
        EmitRcvdRemoteCmd(message.release());
    EmitTrnsmtRemoteCmd();
}

void SerialPortController::TimeOutTmrRemoteEyeAndStatus_Tick()
{
    if (std::unique_ptr<RemoteCommand>(takeTimedOutRemoteMessage()))
        EmitTrnsmtRemoteEyeAndStatusCmd();
}

RemoteCommand *SerialPortController::takeTimedOutRemoteMessage()
{
    if (m_timeOutTmr.isActive() || !m_txmtRemoteCmdQueue.isAwaitingAnswer())
        return nullptr;
    RemoteCommand *const message = m_txmtRemoteCmdQueue.inFlight();
    message->setTimedOut();
    m_txmtRemoteCmdQueue.release(message);
    m_txmtRemoteCmdQueue.setReadyToSend();
    return message;
}

void SerialPortController::StartEstablishCommTmr(int ms, QLabel *label)
{
    m_countdownLabel = label;
    m_establishCommTmr.start(ms);
}

void SerialPortController::EstablishCommTmr_Tick()
{
    if (m_countdownLabel)
        m_countdownLabel->setText(QString::number(m_startupCountdown));
    if (m_startupCountdown > 0) {
        // A booting chassis chatters; whole frames among it were read when they arrived.
        if (m_port.isOpen())
            m_port.readAll();
        --m_startupCountdown;
        return;
    }
    if (m_communicationEstablished)
        return;
    queueSystemRequest(UniversalChan::Commands::VER, {}, StandardCommand::Query);
    queueSystemRequest(UniversalChan::Commands::VERTSKB, {}, StandardCommand::Query);
    m_startupCountdown = kVersionRetrySeconds;
}

const QList<Card> &SerialPortController::cards() const { return *m_cards; }

QStringList SerialPortController::cardInfoStrings() const
{
    QStringList texts;
    for (const Card &card : *m_cards)
        texts += card.GetFormattedCardInfoString();
    return texts;
}

void SerialPortController::ProcessCmd(const StandardCommand &command)
{
    if (command.mnemonic() == UniversalChan::Commands::NOTIFY) {
        // However the marker ended: a stray NAK inside its millisecond must not end start-up for ever.
        if (!std::exchange(m_allSettingsObtained, true))
            EmitAllSettingsObtained();
    } else if (command.type() == StandardCommand::Query && command.status() == StandardCommand::Completed &&
               !m_communicationEstablished) {
        establishCommunication(command.responseData());
    }
}

void SerialPortController::establishCommunication(const QString &version)
{
    StopEstablishCommTmr();
    m_communicationEstablished = true;
    if (m_countdownLabel)
        m_countdownLabel->hide();

    auto systemChannel = std::make_unique<UniversalChan>(nullptr, u"0"_s, this);
    m_systemChannel = systemChannel.get();
    m_systemChannel->setSystemIdentifier(m_systemIdentifier);
    m_rcvdCmdQueueReader->setSystemChannel(m_systemChannel);
    addChannel(std::move(systemChannel));

    queueSystemRequest(UniversalChan::Commands::SYSID, m_systemIdentifier, StandardCommand::Set);
    requestCardList();
    m_cardListTmr.start(kCardListRetryMs);
    m_systemChannel->setVerTsMain(version);
    Q_EMIT CommunicationEstablished();
}

void SerialPortController::requestCardList()
{
    queueSystemRequest(UniversalChan::Commands::CLST, {}, StandardCommand::Query);
}

void SerialPortController::processCardList(const QString &cardList)
{
    m_cardListTmr.stop();
    *m_cards = CardList::parse(cardList);
    ConsolidateCardList();
    GenerateChannelList(cardList);
    for (Channel *channel : std::as_const(m_chanList)) {
        channel->RequestSettings();
        channel->SetSlaveChanList(this, QString::fromLatin1(channel->metaObject()->className()));
    }
    AddCmdToTxmtCmdQueue(new StandardCommand(m_systemChannel, UniversalChan::Address, UniversalChan::Commands::NOTIFY,
                                             {}, StandardCommand::Queued, StandardCommand::Marker,
                                             StandardCommand::kMarkerTimeOutMs));
    queueSystemRequest(UniversalChan::Commands::TRON, u"ON"_s, StandardCommand::Set);
}

void SerialPortController::ConsolidateCardList() { *m_cards = CardList::consolidated(*m_cards); }

void SerialPortController::GenerateChannelList(const QString &cardList)
{
    for (auto &channel : ChannelFactory::create(cardList, this))
        addChannel(std::move(channel));
    updateDispatcher();
}

void SerialPortController::GenerateChannelList(SerialPortController *source)
{
    for (Channel *channel : source->channels())
        takeOver(channel);
}

void SerialPortController::generateTmoipCard(const QString &name)
{
    if (m_portType != COMMAND_LINK)
        return;
    const QString number = name.startsWith(TmoipCard::ChanType) ? name.sliced(TmoipCard::ChanType.size()) : name;
    auto owned = std::make_unique<TmoipCard>(nullptr, number, this);
    TmoipCard *const card = owned.get();
    const auto isKnown = [card](const Channel *channel) { return channel->address() == card->address(); };
    if (number.isEmpty() || std::any_of(m_chanList.cbegin(), m_chanList.cend(), isKnown))
        return;
    addChannel(std::move(owned));
    updateDispatcher();
    card->RequestSettings();
    for (TmoipChan *stream : card->tmoipChanSlots())
        stream->RequestSettings();
    EmitTmoipCardObtained(card);
}

void SerialPortController::addTmoipCard(TmoipCard *card) { takeOver(card); }

void SerialPortController::takeOver(Channel *channel)
{
    m_chanList.append(channel);
    if (m_portType == REMOTE_LINK)
        channel->setSPCRemote(this);
    else if (m_portType == REMOTE_EYE_AND_STATUS_LINK)
        channel->setSPCRemoteEyeAndStatus(this);
    updateDispatcher();
}

void SerialPortController::updateDispatcher()
{
    if (m_rcvdCmdQueueReader)
        m_rcvdCmdQueueReader->SetChanLists();
    if (m_rcvdRemoteCmdQueueReader)
        m_rcvdRemoteCmdQueueReader->SetChanLists();
    if (m_eyeConstDataQueueReader)
        m_eyeConstDataQueueReader->SetChanLists();
}

void SerialPortController::addChannel(std::unique_ptr<Channel> channel)
{
    m_chanList.append(channel.get());
    m_ownChannels.push_back(std::move(channel));
}

void SerialPortController::queueSystemRequest(const QString &mnemonic, const QString &data,
                                              StandardCommand::CommandType type)
{
    AddCmdToTxmtCmdQueue(new StandardCommand(nullptr, UniversalChan::Address, mnemonic, data, StandardCommand::Queued,
                                             type, StandardCommand::kTimeOutMs));
}
