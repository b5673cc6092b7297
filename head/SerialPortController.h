#pragma once

#include "head/LinkStatus.h"
#include "link/ChannelLink.h"
#include "link/LinkKind.h"
#include "link/LinkPort.h"
#include "link/RemoteTransmitQueue.h"
#include "link/StandardCommand.h"
#include "link/TransmitQueue.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class Card;
class ClientProtocol;
class Discovery;
class EyeConstData;
class LinkProtocol;
class QLabel;
class RemoteCommand;
class StandardProtocol;
class TmoipCard;

/// One serial link: its port, the protocol that its kind speaks, its channels, and on the command and spectral links
/// the discovery of what is at the far end.
///
/// Everything runs on the GUI thread. Queued connections put transmitting and dispatching off to the next pass of the
/// event loop, so neither re-enters the other, and their order is the order of the events. On the standard links at
/// most one command is in flight: the next is written only when the one before was acknowledged, answered, rejected
/// or timed out. There is no retry. What waits or is in flight when the cable is pulled ends as timed out, as does what
/// is queued until the link is back.
class SerialPortController : public QObject, public ChannelLink
{
    Q_OBJECT

public:
    using PORT_TYPE = LinkKind::PORT_TYPE;
    using enum LinkKind::PORT_TYPE;

    /// Opens the device of the kind; one that does not open is tried every second.
    /// @param systemIdentifier identity of the chassis, sent to it on the command link; any text elsewhere
    SerialPortController(QObject *parent, PORT_TYPE type, const QString &systemIdentifier);
    ~SerialPortController() override;

    [[nodiscard]] PORT_TYPE portType() const { return m_portType; }
    [[nodiscard]] QSerialPort &port() { return m_port.port(); }
    /// Whether the device has ever been opened.
    [[nodiscard]] bool hasOpened() const { return m_port.hasOpened(); }
    /// What the operator is shown when the device does not open.
    [[nodiscard]] QString openFailureText() const;
    /// Whether the device is not there: not yet, or the cable is pulled.
    [[nodiscard]] bool isLost() const { return m_port.isLost(); }
    [[nodiscard]] LinkStatus status() const;

    // Messages

    void AddCmdToTxmtCmdQueue(StandardCommand *command) override;
    void queueForClient(RemoteCommand *message) override;
    /// As queueForClient(), on the link that the name says.
    void AddCmdToTxmtRemoteCmdQueue(RemoteCommand *command) { queueForClient(command); }
    void AddCmdToTxmtRemoteEyeAndStatusCmdQueue(RemoteCommand *command) { queueForClient(command); }

    /// The queue of a standard link, and of a link to the remote client.
    [[nodiscard]] const TransmitQueue<StandardCommand> &txmtCmdQueue() const;
    [[nodiscard]] const RemoteTransmitQueue &txmtRemoteCmdQueue() const;
    /// Whether the far end is the remote client.
    [[nodiscard]] bool isClientLink() const { return m_client != nullptr; }
    /// How many messages wait to be sent, whatever the kind.
    [[nodiscard]] std::size_t waitingCount() const;

    [[nodiscard]] std::size_t queuedCount() const override { return txmtCmdQueue().appendedCount(); }
    [[nodiscard]] std::size_t takenCount() const override { return txmtCmdQueue().takenCount(); }
    [[nodiscard]] bool isClientAwaitingAnswers() const override;
    [[nodiscard]] bool isClientHeldBack() const override;

    void StopTimeOutTmr() { m_port.timeOutTimer().stop(); }
    /// Writes the request that stops the chassis' reports and waits until it has left, at most @p timeOutMs.
    void writeFinalReportsOff(int timeOutMs);

    // Settings

    [[nodiscard]] bool isStale() const override;
    [[nodiscard]] bool isInDoubt(const StandardCommand &set) const override;
    void noteSet(const StandardCommand &set) override;
    void noteReport() override;

    // Discovery and channels

    /// Starts to wait for the chassis.
    /// @param ms    interval of the countdown in ms
    /// @param label shows the remaining seconds until the chassis answers; may be null
    void StartEstablishCommTmr(int ms, QLabel *label);
    void StopEstablishCommTmr();
    /// Answer to the version query, or the end of the end-of-settings marker.
    void ProcessCmd(const StandardCommand &command);

    [[nodiscard]] QList<Channel *>::const_iterator ChanList_begin() const { return m_chanList.cbegin(); }
    [[nodiscard]] QList<Channel *>::const_iterator ChanList_end() const { return m_chanList.cend(); }
    [[nodiscard]] const QList<Channel *> &channels() const override { return m_chanList; }
    /// The cards of the chassis, one entry a card however many micros it reported.
    [[nodiscard]] const QList<Card> &cards() const;

    /// Makes the channels that the card list names.
    void GenerateChannelList(const QString &cardList);
    /// Takes over the channels of another link, which keeps owning them.
    void GenerateChannelList(SerialPortController *source);
    /// Makes a TMoIP card and queries its settings and those of its streams; on the command link only.
    /// @param name "TM" and the card's number, or the number alone; one without number or known already makes no card
    /// @return whether it made one
    bool generateTmoipCard(const QString &name);
    /// Takes over a channel that the spectral link has found and keeps owning.
    void addSpecChan(Channel *channel) { takeOver(channel); }
    /// Merges the card list's entries into one card each.
    void ConsolidateCardList();

    void EmitTrnsmtCmd() { Q_EMIT TrnsmtCmd(); }
    void EmitRcvdCmd(StandardCommand *command) { Q_EMIT RcvdCmd(command); }
    void EmitTrnsmtRemoteCmd() { Q_EMIT TrnsmtRemoteCmd(); }
    void EmitRcvdRemoteCmd(RemoteCommand *command) { Q_EMIT RcvdRemoteCmd(command); }
    void EmitTrnsmtRemoteEyeAndStatusCmd() { Q_EMIT TrnsmtRemoteEyeAndStatusCmd(); }
    void EmitRcvdEyeConstData(EyeConstData *data) { Q_EMIT RcvdEyeConstData(data); }

Q_SIGNALS:
    void RcvdCmd(StandardCommand *command);
    void TrnsmtCmd();
    void RcvdRemoteCmd(RemoteCommand *command);
    void TrnsmtRemoteCmd();
    void RcvdEyeConstData(EyeConstData *data);
    void TrnsmtRemoteEyeAndStatusCmd();
    /// The device is open, for the first time or again.
    void DeviceFound();
    /// A set, or the query of the presets, has failed: the far end refused it or did not answer.
    void RequestFailed(const QString &address, const QString &mnemonic, bool refused);
    /// The chassis has answered for the first time, or again after the link was lost.
    void CommunicationEstablished();
    /// The chassis has a TMoIP card.
    void TmoipCardObtained(TmoipCard *card);
    /// Every settings query of every channel was answered or has timed out; emitted once.
    void AllSettingsObtained();

public Q_SLOTS:
    /// Takes over a card that the command link has found after this link was opened.
    void addTmoipCard(TmoipCard *card);
    /// Starts or restarts the time-out of the message in flight; 0 starts none.
    void StartTimeOutTmr(int ms) { m_port.startTimeOut(ms); }
    /// Starts the time-out, unless @p timeOutMs is 0, and writes; skipped while the port is not open.
    void WriteToPort(int timeOutMs, const QByteArray &bytes) { m_port.write(timeOutMs, bytes); }
    /// The time of the command in flight is over: it goes to its channel as timed out, and the next one may go.
    void TimeOutTmr_Tick();
    void TimeOutTmrRemote_Tick();
    void TimeOutTmrRemoteEyeAndStatus_Tick();
    /// One second of the start-up countdown; behind it, every third second, the version is queried.
    void EstablishCommTmr_Tick();

private:
    void createProtocol(const QString &systemIdentifier);
    void useStandardProtocol(const QString &systemIdentifier);
    void useRemoteProtocol();
    void useRemoteEyeAndStatusProtocol();
    void useEyeProtocol();
    void discover(const QString &systemIdentifier);
    void connectPort();

    void noteOpened();
    void noteLost();
    void noteFound();
    void noteEnd(const StandardCommand &command);
    void addChannel(Channel *channel);
    /// Adds a channel of another link and attaches this one to it, if it serves the remote client.
    void takeOver(Channel *channel);

    const PORT_TYPE m_portType;
    LinkPort m_port;
    LinkStatus m_status; ///< its counts, and the time of the loss
    QList<Channel *> m_chanList;

    std::unique_ptr<Discovery> m_discovery; ///< of a standard link
    std::unique_ptr<LinkProtocol> m_protocol;
    StandardProtocol *m_standard = nullptr; ///< the protocol of a standard link
    ClientProtocol *m_client = nullptr;     ///< the protocol of a link to the remote client
};
