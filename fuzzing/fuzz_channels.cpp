// Every kind of channel on a command link whose far end is silent, between a card and a remote client that say
// anything.
//
// The first byte of the input chooses the chassis; a line of the rest is one event, by its first character:
//   <  a message of a card       ?  a message of the client     e  a block of the eye link
//   a  ACK   n  NAK   t  time-out   =  a reply to the query in flight, from its data on
//   r  a register written at the panel: number and value        p  a name given there: address, blank, name

#include "channels/DmdChan.h"
#include "channels/RcvrChan.h"
#include "channels/TmoipCard.h"
#include "fuzzing/Fuzz.h"
#include "head/ClientProtocol.h"
#include "head/SerialPortController.h"
#include "head/StandardProtocol.h"
#include "inventory/ChannelDirectory.h"
#include "link/EyeConstData.h"

#include <QCoreApplication>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <QtNumeric>

#include <algorithm>

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace {

const QString kCards =
    u"0103 MPU 2 TUNER A1 X,0121 FPGA1 1 TUNER A1 X,0104 MPU 2 TUNER A2 X,0122 FPGA1 1 TUNER A2 X,"
    "0105 MPU 1 COMBINER A3 X,0110 MPU 1 TAPE A4 X,0170 MPU 1 SPECTRUM S6 X,0136 MPU 1 SPECTRUM S6 X,"_s;
const QString kOlder = u"DEMOD1 MPU 1 K3050 S1,DEMOD2 MPU 1 K3050 S2,DEMOD3 MPU 1 K3050 S3"_s;
const QString kNewer = u"0101 K412W 1 QLN412 S1 X,0102 K412W 1 QLN412 S2 X,0109 K412W 1 QLN412 S3 X"_s;

/// Stays for the whole run, as no channel is ever put on its list.
SerialPortController &remoteLink()
{
    static auto *const link = new SerialPortController(nullptr, SerialPortController::REMOTE_LINK, {});
    return *link;
}

/// Terminals that open, for a link that cannot open its device shows a box, which takes longer than all the rest. Their
/// far ends stay silent: without an event loop nothing is read or written.
void provideDevices()
{
    static const QTemporaryDir folder;
    for (const int number : { 0, 4, 5 }) {
        const int farEnd = ::posix_openpt(O_RDWR | O_NOCTTY);
        Fuzz::require(farEnd >= 0 && ::grantpt(farEnd) == 0 && ::unlockpt(farEnd) == 0, "a terminal");
        Fuzz::require(
            QFile::link(QString::fromLocal8Bit(::ptsname(farEnd)), folder.filePath(u"ttyUSB%1"_s.arg(number))),
            "a device");
    }
    qputenv("ZIRVO_DEVICE_DIR", folder.path().toLocal8Bit());
}

SerialPortController &statusLink()
{
    static auto *const link = new SerialPortController(nullptr, SerialPortController::REMOTE_EYE_AND_STATUS_LINK, {});
    return *link;
}

/// The client reads all messages. Returns how many of them were answers.
std::size_t readByClient(SerialPortController &link)
{
    auto &queue = link.findChild<ClientProtocol *>()->queue();
    const std::size_t answers = queue.answerCount();
    (void)queue.takeWaiting();
    return answers;
}

class Chassis
{
public:
    explicit Chassis(bool olderCards)
    {
        StandardCommand version(nullptr, u"U0"_s, u"VER"_s, {}, StandardCommand::Sent, StandardCommand::Query, 0);
        version.ResponseReceived(u"U0:VER:1"_s);
        m_link.ProcessCmd(version);
        m_link.GenerateChannelList(kCards + (olderCards ? kOlder : kNewer));
        m_link.generateTmoipCard(u"TM1"_s);
        (void)m_link.findChild<StandardProtocol *>()->queue().takeWaiting();
        for (Channel *channel : m_link.channels()) {
            channel->SetSlaveChanList(&m_link, QString::fromLatin1(channel->metaObject()->className()));
            channel->setSPCRemote(&remoteLink());
            channel->setSPCRemoteEyeAndStatus(&statusLink());
        }
        m_directory.assign(m_link.channels());
    }

    void event(QByteArrayView line)
    {
        const char kind = line.isEmpty() ? ' ' : line.front();
        const QString text = QString::fromLocal8Bit(line.sliced(qMin<qsizetype>(1, line.size())));
        if (kind == '<')
            report(text);
        else if (kind == '?')
            serve(text);
        else if (kind == 't')
            timeOut();
        else if (kind == 'a' || kind == 'n')
            answer(QString(QChar(kind == 'a' ? StandardCommand::kAck : StandardCommand::kNak)));
        else if (kind == '=')
            reply(text);
        else
            operate(kind, text);
        settle();
    }

    /// Lets everything that is pending time out.
    void end()
    {
        for (int i = 0; m_link.txmtCmdQueue().isAwaitingAnswer(); ++i) {
            Fuzz::require(i < 100'000, "the queue of commands runs dry");
            event("t");
        }
        Fuzz::require(m_link.txmtCmdQueue().waitingCount() == 0, "nothing waits for ever");
        for (const QString &mnemonic :
             { u"NAME"_s, u"DDQM"_s, u"DFSZ"_s, u"DFWD"_s, u"MEAN"_s, u"BEPO"_s, u"ADEQ"_s, u"RDRG"_s, u"DSRC"_s })
            m_mnemonics.insert(mnemonic);
        for (const Channel *channel : m_link.channels()) {
            checkLists(channel);
            for (const QString &mnemonic : std::as_const(m_mnemonics))
                Fuzz::require(!channel->isSetPending(mnemonic), "a set ends");
        }
    }

private:
    /// Processes what follows from an event: dispatching, queueing the next command, writing it.
    static void settle()
    {
        constexpr int kLongestChain = 3; // what is posted in one pass is sent in the next
        for (int i = 0; i < kLongestChain; ++i)
            QCoreApplication::sendPostedEvents();
        readByClient(remoteLink());
        readByClient(statusLink());
    }

    /// As the reader of the link does with what answers nothing.
    void report(const QString &text)
    {
        const QString mnemonic = text.section(u':', 1, 1);
        if (mnemonic == "CLST"_L1)
            return; // the chassis is as the first byte says
        m_mnemonics.insert(mnemonic);
        m_link.EmitRcvdCmd(new StandardCommand(StandardCommand::fromCard(text)));
    }

    void serve(const QString &text)
    {
        const RemoteCommand message = RemoteCommand::fromClient(text);
        Channel *const target = m_directory.at(message.address());
        if (!target || message.isGarbled() || message.status() != RemoteCommand::Received)
            return;
        m_mnemonics.insert(message.mnemonic());
        target->ProcessCmd(message);
        Fuzz::require(readByClient(remoteLink()) == 1, "a query or set of the client is answered once");
    }

    void reply(const QString &data)
    {
        const StandardCommand *const command = m_link.txmtCmdQueue().inFlight();
        if (!command || command->mnemonic() == "CLST"_L1)
            return;
        const QString text = command->address() + u':' + command->mnemonic() + u':' + data;
        if (command->isAnsweredBy(StandardCommand::fromCard(text)))
            answer(text);
        else
            report(text);
    }

    void answer(const QString &text)
    {
        auto &queue = m_link.findChild<StandardProtocol *>()->queue();
        if (!queue.isAwaitingAnswer())
            return;
        StandardCommand *const command = queue.inFlight();
        if (text == QChar(StandardCommand::kAck) && command->type() != StandardCommand::Set)
            return;
        m_link.StopTimeOutTmr();
        command->ResponseReceived(text);
        m_link.EmitRcvdCmd(command);
        queue.setReadyToSend();
        m_link.EmitTrnsmtCmd();
    }

    void timeOut()
    {
        m_link.StopTimeOutTmr();
        m_link.TimeOutTmr_Tick();
    }

    void operate(char kind, const QString &text)
    {
        const QList<DmdChan *> demodulators = m_directory.all<DmdChan>();
        if (kind == 'r')
            demodulators.first()->setDREG(text.left(2), text.mid(2));
        else if (kind == 'e')
            demodulators.last()->ProcessEyeConstData(EyeConstData(text.toLatin1()));
        else if (Channel *const named = m_directory.at(text.section(u' ', 0, 0)); named && kind == 'p')
            named->setNAME(text.section(u' ', 1));
    }

    static void checkLists(const Channel *channel)
    {
        const auto entries = [](const QString &list) { return list.count(u',') + 1; };
        if (const auto *const receiver = qobject_cast<const RcvrChan *>(channel)) {
            const QList<double> &bounds = receiver->frequencyBounds();
            Fuzz::require(bounds.size() % 2 == 0, "a range has two bounds");
            Fuzz::require(std::all_of(bounds.begin(), bounds.end(), [](double f) { return qIsFinite(f); }), "finite");
        }
        if (const auto *const demodulator = qobject_cast<const DmdChan *>(channel)) {
            Fuzz::require(demodulator->ifFilters().value(0) == "Auto"_L1, "the first IF filter is the automatic one");
            if (demodulator->getIFFL() != "Unknown"_L1)
                Fuzz::require(demodulator->ifFilters().size() == entries(demodulator->getIFFL()) + 1, "IF filters");
            if (demodulator->getDMLS() != "Unknown"_L1)
                Fuzz::require(demodulator->demodModes().size() == entries(demodulator->getDMLS()), "a mode an entry");
            Fuzz::require(!demodulator->getDREG(u"82"_s).isNull(), "a register has a text");
            Fuzz::require(!demodulator->getTMID().contains(u"nan"_s, Qt::CaseInsensitive), "a rate is a number");
        }
    }

    SerialPortController m_link{ nullptr, SerialPortController::COMMAND_LINK, u"FUZZ"_s };
    ChannelDirectory m_directory;
    QSet<QString> m_mnemonics; ///< of all messages
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static auto *const application = new QCoreApplication(*argc, *argv);
    provideDevices();
    return application ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr int kMostEvents = 200;
    const QByteArray whole = Fuzz::bytes(data, size);
    QByteArrayView script(whole);
    Chassis chassis(Fuzz::take(script, 1)[0] & 1);
    int events = 0;
    for (const QByteArray &line : script.toByteArray().split('\n')) {
        if (++events > kMostEvents)
            break;
        chassis.event(line);
    }
    chassis.end();
    return 0;
}
