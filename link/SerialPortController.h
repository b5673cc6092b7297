#pragma once

#include "link/LinkStatus.h"
#include "link/RemoteTransmitQueue.h"
#include "link/StandardCommand.h"
#include "link/TransmitQueue.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSerialPort>
#include <QString>
#include <QTimer>

#include <memory>

class Card;
class Channel;
class Discovery;
class EyeConstData;
class EyeConstDataQueueReader;
class LinkGuard;
class QLabel;
class QMessageBox;
class RcvdCmdQueueReader;
class RcvdRemoteCmdQueueReader;
class SerialPortReader;
class TmoipCard;
class UniversalChan;

/// One serial link with everything that moves messages over it: port, reader, transmit queue with its worker, receive
/// dispatcher and timers; on the command and spectral links also what discovery found there.
///
/// Everything runs on the GUI thread. Queued connections put transmitting and dispatching off to the next pass of the
/// event loop, so neither re-enters the other, and their order is the order of the events. On the standard links at
/// most one command is in flight: the next is written only when the one before was acknowledged, answered, rejected
/// or timed out. There is no retry. What waits or is in flight when the cable is pulled ends as timed out, as does what
/// is queued until the link is back.
class SerialPortController : public QObject
{
    Q_OBJECT

public:
    enum PORT_TYPE : qint32 {
        REMOTE_LINK = 0,
        REMOTE_EYE_AND_STATUS_LINK = 1,
        COMMAND_LINK = 3,
        EYE_CONST_LINK = 4,
        SPECTRAL_LINK = 5,
    };
    Q_ENUM(PORT_TYPE)

    /// Opens the device of the kind. If it cannot be opened, a non-blocking box says so until it can; it is tried every
    /// second.
    /// @param systemIdentifier identity of the chassis, sent to it on the command link; any text elsewhere
    SerialPortController(QObject *parent, PORT_TYPE type, const QString &systemIdentifier);
    ~SerialPortController() override;

    [[nodiscard]] PORT_TYPE portType() const { return m_portType; }
    [[nodiscard]] bool isStandardLink() const { return m_portType == COMMAND_LINK || m_portType == SPECTRAL_LINK; }
    [[nodiscard]] QSerialPort &port() { return m_port; }
    /// Whether the device is not there: not yet, or the cable is pulled.
    [[nodiscard]] bool isLost() const;
    [[nodiscard]] LinkStatus status() const;
    /// Whether the far end may hold other settings than its channels here.
    [[nodiscard]] bool isStale() const;
    /// As AddCmdToTxmtCmdQueue(), for a query that lets all other commands pass, though not for ever.
    void queueInBackground(StandardCommand *query);
    /// Ends the queries that let all others pass and still wait, unasked.
    void dropBackground();
    /// Notes for the status that a frame has come.
    void noteMessage() { m_lastMessage.start(); }
    /// Notes that the far end has reported a reading; neither answers nor settings that it tells are reports.
    void noteReport();
    /// Notes how a command that was queued or in flight has ended.
    void noteEnd(const StandardCommand &command);
    /// Notes the end of a set, once its channel has seen it; the setting is read back if the end may be wrong.
    void noteSet(const StandardCommand &set);
    /// Whether the card may hold something else than the value that @p set would replace.
    [[nodiscard]] bool isInDoubt(const StandardCommand &set) const;
    /// Notes an acknowledgement that nobody waits for.
    void noteStrayAnswer();
    /// Notes a message that answers no query.
    void noteUnsolicited(const StandardCommand &message);

    /// Appends to the transmit queue. The link takes ownership; the receive dispatcher deletes the command.
    void AddCmdToTxmtCmdQueue(StandardCommand *command);
    /// As AddCmdToTxmtCmdQueue(), for the two remote links. A client that takes less than it is told misses values that
    /// newer ones have replaced, and the oldest of a series; never an answer.
    void AddCmdToTxmtRemoteCmdQueue(RemoteCommand *command);
    void AddCmdToTxmtRemoteEyeAndStatusCmdQueue(RemoteCommand *command);

    /// The queues, for the workers of the link's kind: of a standard link, and of a link to the remote client.
    [[nodiscard]] TransmitQueue<StandardCommand> &txmtCmdQueue() { return m_txmtCmdQueue; }
    [[nodiscard]] const TransmitQueue<StandardCommand> &txmtCmdQueue() const { return m_txmtCmdQueue; }
    [[nodiscard]] RemoteTransmitQueue &txmtRemoteCmdQueue() { return m_txmtRemoteCmdQueue; }

    /// Whether the port holds so much that the far end cannot be reading; nothing more is given to it then.
    [[nodiscard]] bool isPortFull() const;
    /// Whether the client has to wait until answers or commands that it has caused are on their way.
    [[nodiscard]] bool isClientHeldBack() const;
    [[nodiscard]] bool isClientAwaitingAnswers() const { return m_txmtRemoteCmdQueue.answerCount() > 0; }

    /// Writes the request that stops the chassis' reports and waits until it has left, at most @p timeOutMs.
    /// For the end of the program, when no event loop is left to write it.
    void writeFinalReportsOff(int timeOutMs);

    void StopTimeOutTmr() { m_timeOutTmr.stop(); }

    /// Whether the program is ending: what is still on its way is deleted and reaches no channel.
    [[nodiscard]] bool isEnding() const { return m_ending; }

    /// Starts to wait for the chassis.
    /// @param ms    interval of the countdown in ms
    /// @param label shows the remaining seconds until the chassis answers; may be null
    void StartEstablishCommTmr(int ms, QLabel *label);
    void StopEstablishCommTmr();

    // Inventory

    [[nodiscard]] QList<Channel *>::const_iterator ChanList_begin() const { return m_chanList.cbegin(); }
    [[nodiscard]] QList<Channel *>::const_iterator ChanList_end() const { return m_chanList.cend(); }
    [[nodiscard]] const QList<Channel *> &channels() const { return m_chanList; }
    /// The cards of the chassis, one entry a card however many micros it reported.
    [[nodiscard]] const QList<Card> &cards() const;
    /// What the cards tell of themselves, one text a card.
    [[nodiscard]] QStringList cardInfoStrings() const;

    /// Answer to the version query, or the end of the end-of-settings marker.
    void ProcessCmd(const StandardCommand &command);
    /// The chassis' card list: creates cards and channels and queues every settings query, the end-of-settings marker
    /// behind them, and the request that starts the reports. Called once, by the system channel.
    void processCardList(const QString &cardList);
    /// A later one.
    void noteCardList(const QString &cardList);
    /// Creates the channels that the card list tells of.
    void GenerateChannelList(const QString &cardList);
    /// Takes over the channels of another link, which keeps owning them.
    void GenerateChannelList(SerialPortController *source);
    /// Creates a TMoIP card and asks for its settings and those of its streams; on the command link only.
    /// @param name "TM" and the card's number, or the number alone; one without number or known already makes no card
    /// @return whether it made one
    bool generateTmoipCard(const QString &name);
    /// Takes over a channel that the spectral link has found and keeps owning.
    void addSpecChan(Channel *channel) { takeOver(channel); }
    /// Takes a channel that discovery has found and keeps owning.
    void addChannel(Channel *channel);
    /// The system channel among them, which gets what comes from the system address.
    void setSystemChannel(UniversalChan *channel);
    /// Merges the card list's entries into one card each.
    void ConsolidateCardList();

    void EmitTrnsmtCmd() { Q_EMIT TrnsmtCmd(); }
    void EmitRcvdCmd(StandardCommand *command) { Q_EMIT RcvdCmd(command); }
    void EmitTrnsmtRemoteCmd() { Q_EMIT TrnsmtRemoteCmd(); }
    void EmitRcvdRemoteCmd(RemoteCommand *command) { Q_EMIT RcvdRemoteCmd(command); }
    void EmitTrnsmtRemoteEyeAndStatusCmd() { Q_EMIT TrnsmtRemoteEyeAndStatusCmd(); }
    void EmitRcvdEyeConstData(EyeConstData *data) { Q_EMIT RcvdEyeConstData(data); }
    void EmitCommunicationEstablished() { Q_EMIT CommunicationEstablished(); }
    void EmitAllSettingsObtained() { Q_EMIT AllSettingsObtained(); }
    void EmitTmoipCardObtained(TmoipCard *card) { Q_EMIT TmoipCardObtained(card); }

Q_SIGNALS:
    void RcvdCmd(StandardCommand *command);
    void TrnsmtCmd();
    void RcvdRemoteCmd(RemoteCommand *command);
    void TrnsmtRemoteCmd();
    void RcvdEyeConstData(EyeConstData *data);
    void TrnsmtRemoteEyeAndStatusCmd();
    /// A set, or the list of presets, has come to nothing: the far end refused it or did not answer.
    void RequestFailed(const QString &address, const QString &mnemonic, bool refused);
    /// The operator has closed the box that told of a device that would not open.
    void OpenFailureAcknowledged();
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
    void StartTimeOutTmr(int ms);
    /// Starts the time-out, unless @p timeOutMs is 0, and writes; skipped while the port is not open.
    void WriteToPort(int timeOutMs, const QByteArray &bytes);
    /// The time of the command in flight is over: it goes to its channel as timed out, and the next one may go.
    void TimeOutTmr_Tick();
    void TimeOutTmrRemote_Tick();
    void TimeOutTmrRemoteEyeAndStatus_Tick();
    /// One second of the start-up countdown; behind it, every third second, the version is asked for.
    void EstablishCommTmr_Tick();

private:
    void configurePort();
    void openPort();
    void showOpenFailure();
    void noteOpened();
    void connectGuard();
    void linkLost();
    void linkFound();
    /// Ends a command without an answer.
    void timeOut(StandardCommand *command);
    void timeOut(RemoteCommand *message);
    void timeOutAll();
    void createWorkers();
    void createStandardWorkers();
    void createRemoteWorkers();
    void createRemoteEyeAndStatusWorkers();
    void createEyeConstWorkers();

    /// Ends the message in flight after its time-out; returns whether the next one may go.
    bool finishRemoteMessage();
    void appendForClient(RemoteCommand *command);
    /// Adds a channel of another link and attaches this one to it, if it serves the remote client.
    void takeOver(Channel *channel);

    const PORT_TYPE m_portType;
    QSerialPort m_port;

    TransmitQueue<StandardCommand> m_txmtCmdQueue;
    RemoteTransmitQueue m_txmtRemoteCmdQueue;
    QTimer m_timeOutTmr;

    std::unique_ptr<LinkGuard> m_guard;
    LinkStatus m_status; ///< the counts of it, and the time of the loss
    QElapsedTimer m_lastMessage;
    QPointer<QMessageBox> m_openFailureBox;

    std::unique_ptr<Discovery> m_discovery; ///< of a standard link
    QList<Channel *> m_chanList;

    // The workers of this kind of link; they find each other through this controller's signals.
    std::unique_ptr<SerialPortReader> m_reader; ///< none on the remote eye-and-status link
    std::unique_ptr<QObject> m_transmitWorker;
    std::unique_ptr<QObject> m_receiveWorker;                       ///< none there either: it only sends
    RcvdCmdQueueReader *m_rcvdCmdQueueReader = nullptr;             ///< the receive worker of a standard link
    RcvdRemoteCmdQueueReader *m_rcvdRemoteCmdQueueReader = nullptr; ///< the receive worker of the remote link
    EyeConstDataQueueReader *m_eyeConstDataQueueReader = nullptr;   ///< the receive worker of the eye link
    bool m_hasOpened = false;
    bool m_ending = false;
};
