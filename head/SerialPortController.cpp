#include "head/SerialPortController.h"

#include "channels/TmoipCard.h"
#include "channels/UniversalChan.h"
#include "head/Discovery.h"
#include "head/EyeConstDataQueueReader.h"
#include "head/EyeProtocol.h"
#include "head/RcvdCmdQueueReader.h"
#include "head/RcvdRemoteCmdQueueReader.h"
#include "head/RemoteEyeAndStatusProtocol.h"
#include "head/RemoteProtocol.h"
#include "head/StandardProtocol.h"
#include "head/TxmtCmdQueueReader.h"
#include "head/TxmtRemoteCmdQueueReader.h"
#include "head/TxmtRemoteEyeAndStatusCmdQueueReader.h"
#include "link/EyeConstData.h"
#include "link/SerialDevices.h"

#include <QLabel>
#include <QTime>

using namespace Qt::StringLiterals;

namespace {

constexpr int kSpectralStartupSeconds = 2;

QByteArray reportsOffRequest()
{
    return StandardCommand::set(nullptr, UniversalChan::Address, UniversalChan::Commands::TRON, u"OFF"_s)
        .commandBytes();
}

} // namespace

SerialPortController::SerialPortController(QObject *parent, PORT_TYPE type, const QString &systemIdentifier)
    : QObject(parent)
    , m_portType(type)
    , m_port(type)
{
    m_port.setParent(this);
    createProtocol(systemIdentifier);
    m_protocol->setParent(this);
    connectPort();
    m_port.open();
}

SerialPortController::~SerialPortController()
{
    // Messages on their way to the dispatcher belong to nobody else, and must not reach channels that are half gone.
    m_protocol->finish();
}

// What each kind of link is made of

void SerialPortController::createProtocol(const QString &systemIdentifier)
{
    switch (m_portType) {
    case COMMAND_LINK:
    case SPECTRAL_LINK:
        useStandardProtocol(systemIdentifier);
        return;
    case REMOTE_LINK:
        useRemoteProtocol();
        return;
    case REMOTE_EYE_AND_STATUS_LINK:
        useRemoteEyeAndStatusProtocol();
        return;
    case EYE_CONST_LINK:
        useEyeProtocol();
        return;
    }
    Q_UNREACHABLE();
}

void SerialPortController::useStandardProtocol(const QString &systemIdentifier)
{
    auto protocol = std::make_unique<StandardProtocol>(m_port, *this);
    m_standard = protocol.get();
    m_protocol = std::move(protocol);
    connect(m_standard, &StandardProtocol::transmissionDue, this, &SerialPortController::TrnsmtCmd);
    connect(m_standard, &StandardProtocol::received, this, &SerialPortController::RcvdCmd);
    connect(m_standard, &StandardProtocol::ended, this, &SerialPortController::noteEnd);
    connect(this, &SerialPortController::TrnsmtCmd, m_standard->transmitter(), &TxmtCmdQueueReader::CheckTxmtCmdQueue,
            Qt::QueuedConnection);
    connect(this, &SerialPortController::RcvdCmd, m_standard->dispatcher(), &RcvdCmdQueueReader::CheckRcvdCmdQueue,
            Qt::QueuedConnection);
    connect(m_standard->dispatcher(), &RcvdCmdQueueReader::startupCommandEnded, this,
            qOverload<const StandardCommand &>(&SerialPortController::ProcessCmd));
    connect(&m_port.timeOutTimer(), &QTimer::timeout, this, &SerialPortController::TimeOutTmr_Tick,
            Qt::QueuedConnection);
    discover(systemIdentifier);
}

void SerialPortController::discover(const QString &systemIdentifier)
{
    const bool isCommandLink = m_portType == COMMAND_LINK;
    const Discovery::Options options{ .systemIdentifier = systemIdentifier,
                                      .startupSeconds = isCommandLink ? SerialDevices::commandLinkStartupSeconds()
                                                                      : kSpectralStartupSeconds,
                                      .hasTmoipCards = isCommandLink };
    m_discovery = std::make_unique<Discovery>(*m_standard, m_port, *this, options);
    m_discovery->setParent(this);
    connect(m_discovery.get(), &Discovery::startupTick, this, &SerialPortController::EstablishCommTmr_Tick,
            Qt::QueuedConnection);
    connect(m_discovery.get(), &Discovery::channelFound, this, &SerialPortController::addChannel);
    connect(m_discovery.get(), &Discovery::tmoipCardFound, this, &SerialPortController::TmoipCardObtained);
    connect(m_discovery.get(), &Discovery::established, this, &SerialPortController::CommunicationEstablished);
    connect(m_discovery.get(), &Discovery::allSettingsObtained, this, &SerialPortController::AllSettingsObtained);
    SettingsCheck &check = m_discovery->rereading().check();
    connect(m_standard, &StandardProtocol::strayAnswer, &check, &SettingsCheck::noteStrayAnswer);
    connect(m_standard, &StandardProtocol::unsolicited, &check, &SettingsCheck::noteUnsolicited);
}

void SerialPortController::useRemoteProtocol()
{
    auto protocol = std::make_unique<RemoteProtocol>(m_port, *this);
    connect(protocol.get(), &RemoteProtocol::transmissionDue, this, &SerialPortController::TrnsmtRemoteCmd);
    connect(protocol.get(), &RemoteProtocol::received, this, &SerialPortController::RcvdRemoteCmd);
    connect(this, &SerialPortController::TrnsmtRemoteCmd, protocol->transmitter(),
            &TxmtRemoteCmdQueueReader::CheckTxmtRemoteCmdQueue, Qt::QueuedConnection);
    connect(this, &SerialPortController::RcvdRemoteCmd, protocol->dispatcher(),
            &RcvdRemoteCmdQueueReader::CheckRcvdRemoteCmdQueue, Qt::QueuedConnection);
    connect(&m_port.timeOutTimer(), &QTimer::timeout, this, &SerialPortController::TimeOutTmrRemote_Tick,
            Qt::QueuedConnection);
    m_client = protocol.get();
    m_protocol = std::move(protocol);
}

void SerialPortController::useRemoteEyeAndStatusProtocol()
{
    auto protocol = std::make_unique<RemoteEyeAndStatusProtocol>(m_port, *this);
    connect(protocol.get(), &RemoteEyeAndStatusProtocol::transmissionDue, this,
            &SerialPortController::TrnsmtRemoteEyeAndStatusCmd);
    connect(this, &SerialPortController::TrnsmtRemoteEyeAndStatusCmd, protocol->transmitter(),
            &TxmtRemoteEyeAndStatusCmdQueueReader::CheckTxmtRemoteEyeAndStatusCmdQueue, Qt::QueuedConnection);
    connect(&m_port.timeOutTimer(), &QTimer::timeout, this, &SerialPortController::TimeOutTmrRemoteEyeAndStatus_Tick,
            Qt::QueuedConnection);
    m_client = protocol.get();
    m_protocol = std::move(protocol);
}

void SerialPortController::useEyeProtocol()
{
    auto protocol = std::make_unique<EyeProtocol>(m_port, *this);
    connect(protocol.get(), &EyeProtocol::received, this, &SerialPortController::RcvdEyeConstData);
    connect(this, &SerialPortController::RcvdEyeConstData, protocol->dispatcher(),
            &EyeConstDataQueueReader::CheckEyeConstDataQueue, Qt::QueuedConnection);
    m_protocol = std::move(protocol);
}

// The port

void SerialPortController::connectPort()
{
    connect(&m_port, &LinkPort::opened, this, &SerialPortController::noteOpened);
    connect(&m_port, &LinkPort::lost, this, &SerialPortController::noteLost);
    connect(&m_port, &LinkPort::found, this, &SerialPortController::noteFound);
}

QString SerialPortController::openFailureText() const
{
    const QString text = m_portType == EYE_CONST_LINK ? u"%1 Comm Port Won't Open"_s : u"Can't Open %1"_s;
    return text.arg(m_port.name());
}

/// A chassis that went on reporting for an earlier run is to wait until its channels are known.
void SerialPortController::noteOpened()
{
    if (m_portType == COMMAND_LINK)
        m_port.write(0, reportsOffRequest());
}

void SerialPortController::noteLost()
{
    m_status.lostSince = QTime::currentTime();
    m_port.timeOutTimer().stop();
    if (m_discovery)
        m_discovery->pause();
    m_protocol->abort();
}

void SerialPortController::noteFound()
{
    Q_EMIT DeviceFound();
    if (m_discovery)
        m_discovery->resume();
}

void SerialPortController::writeFinalReportsOff(int timeOutMs)
{
    if (!port().isOpen())
        return;
    m_port.write(0, reportsOffRequest());
    m_port.drain(timeOutMs);
}

LinkStatus SerialPortController::status() const
{
    LinkStatus status = m_status;
    status.silentMs = m_protocol->silentMs();
    if (!hasOpened())
        status.state = LinkStatus::State::NotPresent;
    else if (isLost())
        status.state = LinkStatus::State::Lost;
    else if (m_discovery)
        m_discovery->report(status);
    else
        status.state = LinkStatus::State::Live;
    return status;
}

// Messages

void SerialPortController::AddCmdToTxmtCmdQueue(StandardCommand *command) { m_standard->append(command); }

void SerialPortController::queueForClient(RemoteCommand *message) { m_client->append(message); }

const TransmitQueue<StandardCommand> &SerialPortController::txmtCmdQueue() const { return m_standard->queue(); }

const RemoteTransmitQueue &SerialPortController::txmtRemoteCmdQueue() const { return m_client->queue(); }

std::size_t SerialPortController::waitingCount() const { return m_protocol->waitingCount(); }

bool SerialPortController::isClientAwaitingAnswers() const { return txmtRemoteCmdQueue().answerCount() > 0; }

bool SerialPortController::isClientHeldBack() const { return !isLost() && m_client->isClientHeldBack(); }

void SerialPortController::TimeOutTmr_Tick() { m_standard->timeOutInFlight(); }

void SerialPortController::TimeOutTmrRemote_Tick() { m_client->timeOutInFlight(); }

void SerialPortController::TimeOutTmrRemoteEyeAndStatus_Tick() { m_client->timeOutInFlight(); }

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

// Settings

bool SerialPortController::isStale() const { return isLost() || (m_discovery && m_discovery->isStale()); }

bool SerialPortController::isInDoubt(const StandardCommand &set) const
{
    return m_discovery->rereading().check().isInDoubt(set);
}

void SerialPortController::noteSet(const StandardCommand &set) { m_discovery->rereading().check().noteSet(set); }

void SerialPortController::noteReport() { m_discovery->rereading().noteReport(); }

// Discovery and channels

void SerialPortController::StartEstablishCommTmr(int ms, QLabel *label)
{
    if (label) {
        connect(m_discovery.get(), &Discovery::countedDown, label, qOverload<int>(&QLabel::setNum));
        connect(m_discovery.get(), &Discovery::established, label, &QWidget::hide);
    }
    m_discovery->start(ms);
}

void SerialPortController::StopEstablishCommTmr() { m_discovery->stop(); }

void SerialPortController::EstablishCommTmr_Tick() { m_discovery->tick(); }

void SerialPortController::ProcessCmd(const StandardCommand &command) { m_discovery->process(command); }

const QList<Card> &SerialPortController::cards() const { return m_discovery->inventory().cards(); }

void SerialPortController::ConsolidateCardList() { m_discovery->inventory().consolidate(); }

void SerialPortController::GenerateChannelList(const QString &cardList) { m_discovery->createChannels(cardList); }

void SerialPortController::GenerateChannelList(SerialPortController *source)
{
    for (Channel *channel : source->channels())
        takeOver(channel);
}

bool SerialPortController::generateTmoipCard(const QString &name) { return m_discovery->createTmoipCard(name); }

void SerialPortController::addTmoipCard(TmoipCard *card) { takeOver(card); }

void SerialPortController::takeOver(Channel *channel)
{
    m_protocol->serve(channel);
    addChannel(channel);
}

void SerialPortController::addChannel(Channel *channel)
{
    m_chanList.append(channel);
    m_protocol->SetChanLists();
}
