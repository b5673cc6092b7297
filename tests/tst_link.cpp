#include "channels/UniversalChan.h"
#include "head/SerialPortController.h"
#include "link/EyeConstData.h"
#include "support/LinkBench.h"
#include "support/Wait.h"

#include <QApplication>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Command = StandardCommand;
using Link = SerialPortController;
using enum SerialPortController::PORT_TYPE;
using enum StandardCommand::CommandType;

constexpr int kLong = 600'000; // ms; no test waits for it

// The application's command line: two words, or also the third, which selects the older board.
char words[][16] = { "tst_link", "-legacyboard2", "-legacyboard" };
char *arguments[] = { words[0], words[1], words[2], nullptr };
int argumentCount = 2;

/// A standard link that has written its greeting, its far end, and what it delivered to its dispatcher, one line a
/// message: the status, the request's mnemonic if any, and the response.
struct Rig
{
    explicit Rig(Link::PORT_TYPE type = COMMAND_LINK, int startupSeconds = 0)
        : bench(startupSeconds)
        , far(type == COMMAND_LINK ? bench.command() : bench.spectral())
        , link(nullptr, type, u"RACK-7"_s)
    {
        QObject::connect(&link, &Link::RcvdCmd, &link, [this](const Command *c) {
            const QString response = c->responseAddress() + u' ' + c->responseMnemonic() + u' ' + c->responseData();
            delivered += u"%1 %2 %3"_s.arg(c->status()).arg(c->mnemonic(), response).simplified().toLatin1();
        });
        QVERIFY(type == SPECTRAL_LINK || far.waitForFrame("U0:TRON:OFF"));
        far.clear();
    }

    void queue(Command::CommandType type, const QByteArray &request, int timeOutMs = kLong)
    {
        const QStringList parts = QString::fromLatin1(request).split(u':');
        link.AddCmdToTxmtCmdQueue(
            new Command(nullptr, parts[0], parts[1], parts.value(2), Command::Created, type, timeOutMs));
    }
    /// Waits until @p request is in flight and unanswered.
    [[nodiscard]] bool waitInFlight(const QByteArray &request)
    {
        const QString text = QString::fromLatin1('\x02' + request + '\r');
        const auto &waiting = link.txmtCmdQueue();
        return waitUntil([&] { return waiting.isAwaitingAnswer() && waiting.inFlight()->commandText() == text; });
    }
    /// Waits until everything sent before has been dealt with.
    [[nodiscard]] bool settle()
    {
        far.sendFrame("X9:FENCE:1");
        return waitUntil([&] { return delivered.removeAll("3 X9 FENCE 1") > 0; });
    }
    void timeOutNow()
    {
        link.StopTimeOutTmr();
        link.TimeOutTmr_Tick();
    }

    LinkBench bench;
    FarEnd &far;
    Link link;
    QByteArrayList delivered;
};

} // namespace

/// One serial link over a real pseudo-terminal: what leaves when, and what each incoming frame does.
class LinkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneInFlight_data();
    void oneInFlight();
    void incoming_data();
    void incoming();
    void markerAndNoTimeOut();
    void devices();
    void eyeBlocks();
    void remoteQueuesPace();
    void destroyedHalfWay();
    void countdown();
};

void LinkTest::oneInFlight_data()
{
    QTest::addColumn<Command::CommandType>("type");
    QTest::addColumn<QByteArray>("answer"); // empty: time-out
    QTest::addColumn<QByteArray>("delivered");

    QTest::newRow("ACK") << Set << QByteArray("\x06") << QByteArray("5 QRY");
    QTest::newRow("NAK") << Set << QByteArray("\x15") << QByteArray("6 QRY");
    QTest::newRow("reply") << Query << QByteArray("R1:QRY:7") << QByteArray("5 QRY R1 QRY 7");
    QTest::newRow("time-out") << Query << QByteArray() << QByteArray("7 QRY");
}

void LinkTest::oneInFlight()
{
    QFETCH(Command::CommandType, type);
    QFETCH(QByteArray, answer);
    QFETCH(QByteArray, delivered);

    Rig rig;
    for (int i = 0; i < 10; ++i)
        rig.queue(type, "R1:QRY:" + QByteArray::number(i));
    for (int i = 0; i < 10; ++i) {
        QVERIFY(rig.far.waitForFrame("R1:QRY:" + QByteArray::number(i)));
        QVERIFY(rig.settle());
        QCOMPARE(rig.far.frames().size(), i + 1);
        answer.isEmpty() ? rig.timeOutNow() : rig.far.sendFrame(answer);
        QVERIFY(waitUntil([&] { return rig.delivered == QByteArrayList(i + 1, delivered); }));
    }
}

void LinkTest::incoming_data()
{
    QTest::addColumn<Command::CommandType>("type");
    QTest::addColumn<QByteArray>("waiting"); // the command in flight
    QTest::addColumn<QByteArray>("frames");
    QTest::addColumn<bool>("completes");
    QTest::addColumn<QByteArray>("delivered");

    const auto row = [](const char *name, Command::CommandType type, const QByteArray &waiting,
                        const QByteArray &frames, bool completes, const QByteArray &delivered) {
        QTest::newRow(name) << type << waiting << frames << completes << delivered;
    };
    row("reply", Query, "U0:TIME", "U0:TIME:12:30:00", true, "5 TIME U0 TIME 12:30:00");
    row("reply without data", Query, "U0:PLIST", "U0:PLIST:", true, "5 PLIST U0 PLIST");
    row("two parts are no reply", Query, "U0:PLIST", "U0:PLIST", false, "3 U0 PLIST");
    row("other address, other mnemonic", Query, "R1:FREQ", "R2:FREQ:1|R1:FREX:1", false, "3 R2 FREQ 1|3 R1 FREX 1");
    row("late ACK", Set, "R1:FREQ:2300", "\x06", true, "5 FREQ"); // it names no setting
    row("late answer", Query, "R1:FREQ", "R1:LATE:7|R1:FREQ:8", true, "3 R1 LATE 7|5 FREQ R1 FREQ 8");
    row("ACK for a query", Query, "R1:FREQ", "\x06", false, "8");
    row("NAK for a query", Query, "R1:FREQ", "\x15", true, "6 FREQ");
    row("register", Query, "D1:RDRG:1A", "D1:RDRG:1A:7F", true, "5 RDRG D1 RDRG 1A:7F");
    row("other register", Query, "D1:RDRG:1A", "D1:RDRG:1B7F", false, "3 D1 RDRG 1B7F");
    row("reply for a set", Set, "R1:FREQ:2300", "R1:FREQ:2300", false, "3 R1 FREQ 2300");
    row("two ACKs in one read", Set, "R1:FREQ:2300", "\x06|\x06", true, "5 FREQ|8"); // the next is not written yet
    row("colons of unsolicited data", Query, "R1:FREQ", "U0:TIME:1:2|TM1-0:TIME:1:2|TM1-0:ADDR:1:2|T1:TIME:1:2", false,
        "3 U0 TIME 12|3 TM1-0 TIME 1:2|3 TM1-0 ADDR 12|3 T1 TIME 12");
    row("stray bytes", Query, "R1:FREQ", "booting||Z|:|\xC3", false, "8|8|8|8|8");
    row("ACK for the marker", Marker, "U0:NOTIFY", "\x06", false, "8");
    row("NAK for the marker", Marker, "U0:NOTIFY", "\x15", true, "6 NOTIFY");
}

void LinkTest::incoming()
{
    QFETCH(Command::CommandType, type);
    QFETCH(QByteArray, waiting);
    QFETCH(QByteArray, frames);
    QFETCH(bool, completes);
    QFETCH(QByteArray, delivered);

    const QByteArray late = type == Set ? "R1:LATE:1" : "R1:LATE";
    const QByteArray bytes = '\x02' + frames.replace("|", "\r\x02") + '\r';
    for (const qsizetype pieceSize : { bytes.size(), qsizetype(1) }) {
        Rig rig;
        rig.far.ack(); // stray
        QVERIFY(rig.settle());
        rig.queue(type == Set ? Set : Query, late);
        rig.queue(type, waiting);
        rig.queue(Query, "R1:NEXT");
        QVERIFY(rig.waitInFlight(late));
        rig.timeOutNow();
        QVERIFY(rig.waitInFlight(waiting));

        for (qsizetype sent = 0; sent < bytes.size(); sent += pieceSize) {
            const QSignalSpy reads(&rig.link.port(), &QSerialPort::readyRead);
            rig.far.send(bytes.mid(sent, pieceSize));
            QVERIFY(waitUntil([&reads] { return !reads.isEmpty(); }));
        }
        QVERIFY(rig.settle());
        QVERIFY(rig.waitInFlight(completes ? QByteArray("R1:NEXT") : waiting));
        rig.link.TimeOutTmr_Tick(); // stale: the time of the one in flight still runs
        QCOMPARE(rig.delivered.join('|'), "8|7 LATE|" + delivered);
    }
}

void LinkTest::markerAndNoTimeOut()
{
    Rig rig;
    rig.queue(Query, "R1:LAST");
    rig.queue(Marker, "U0:NOTIFY", 1);
    rig.queue(Query, "R1:NEXT", 0);
    rig.queue(Query, "R1:NEVER");
    QVERIFY(rig.waitInFlight("R1:LAST"));
    QVERIFY(rig.settle());
    rig.far.sendFrame("R1:LAST:1");
    QVERIFY(rig.far.waitForFrame("R1:NEXT"));
    QCOMPARE(rig.delivered.join('|'), QByteArray("5 LAST R1 LAST 1|7 NOTIFY"));
    for (int i = 0; i < 5; ++i)
        QVERIFY(rig.settle());
    QVERIFY(rig.waitInFlight("R1:NEXT"));
    QCOMPARE(rig.far.frames(), (QByteArrayList{ "R1:LAST", "R1:NEXT" }));
}

void LinkTest::devices()
{
    const QTemporaryDir noDevices;
    for (const auto &[type, failure, legacyFailure] :
         { std::tuple(COMMAND_LINK, u"Can't Open /ttyUSB0"_s, u"Can't Open /ttyUSB3"_s),
           std::tuple(EYE_CONST_LINK, u"/ttyUSB1 Comm Port Won't Open"_s, u"/ttyUSB7 Comm Port Won't Open"_s),
           std::tuple(SPECTRAL_LINK, u"Can't Open /ttyUSB2"_s, u"Can't Open /ttyUSB2"_s),
           std::tuple(REMOTE_LINK, u"Can't Open /ttyUSB4"_s, u"Can't Open /ttyUSB8"_s),
           std::tuple(REMOTE_EYE_AND_STATUS_LINK, u"Can't Open /ttyUSB5"_s, u"Can't Open /ttyUSB9"_s) }) {
        const LinkBench bench;
        Link open(nullptr, type, {});
        QVERIFY(open.port().isOpen());
        QCOMPARE(open.port().baudRate(), 921600);
        QCOMPARE(open.port().readBufferSize(), type == COMMAND_LINK || type == SPECTRAL_LINK ? 0 : 4096);
        qputenv("ZIRVO_DEVICE_DIR", noDevices.path().toLocal8Bit());
        for (const bool isLegacy : { true, false }) {
            argumentCount = isLegacy ? 3 : 2;
            const Link closed(nullptr, type, {});
            QVERIFY(!closed.hasOpened());
            QCOMPARE(closed.openFailureText().remove(noDevices.path()), isLegacy ? legacyFailure : failure);
        }
    }
}

void LinkTest::eyeBlocks()
{
    LinkBench bench;
    Link link(nullptr, EYE_CONST_LINK, {});
    QByteArrayList blocks;
    connect(&link, &Link::RcvdEyeConstData, this, [&](EyeConstData *data) { blocks += data->text().toLatin1(); });

    // Five full blocks in one burst are more than the port's read buffer holds.
    QByteArrayList frames(5, QByteArray(2051, 'A'));
    for (const int size : { 2050, 2052, 14, 16 })
        frames += QByteArray(size, 'B');
    bench.eye().send('\x02' + frames.join("\x04\x02") + "\x04\x02 2345678901234\r\x04");
    QVERIFY(waitUntil([&] { return blocks.size() >= 6; }));
    QCOMPARE(blocks, QByteArrayList(5, QByteArray(2048, 'A')) + QByteArrayList{ "678901234\r" });

    // Cut, but not dispatched when the link ends.
    bench.eye().send("\x02 23456789012345\x04");
    QVERIFY(link.port().waitForReadyRead(5000));
    QCOMPARE(blocks.size(), 7);
}

void LinkTest::remoteQueuesPace()
{
    for (const bool isRemote : { true, false }) {
        LinkBench bench;
        FarEnd &far = isRemote ? bench.remote() : bench.remoteEyeAndStatus();
        Link link(nullptr, isRemote ? REMOTE_LINK : REMOTE_EYE_AND_STATUS_LINK, {});
        const auto tick = [&] { isRemote ? link.TimeOutTmrRemote_Tick() : link.TimeOutTmrRemoteEyeAndStatus_Tick(); };
        // The last one is queued and never written when the link ends.
        for (const int timeOutMs : { kLong, 1, 1, kLong, kLong }) {
            auto *const message =
                new RemoteCommand(nullptr, u"R1"_s, u"SSLV"_s, u"-62"_s, timeOutMs, RemoteCommand::Forwarded, true);
            isRemote ? link.AddCmdToTxmtRemoteCmdQueue(message) : link.AddCmdToTxmtRemoteEyeAndStatusCmdQueue(message);
        }
        QVERIFY(far.waitForFrames(1));
        tick(); // stale: the first one's time still runs
        QVERIFY(link.txmtRemoteCmdQueue().inFlight());
        link.StopTimeOutTmr();
        tick();
        QVERIFY(far.waitForFrames(4));
        QCOMPARE(far.bytes(), QByteArray("\x02R1:SSLV:-62\r").repeated(4));
    }
}

/// The address sanitizer reports what is leaked or deleted twice.
void LinkTest::destroyedHalfWay()
{
    for (const QByteArray answer : { "", "R1:FREQ:1", "\x15\r\x02R1:AFC:1" }) {
        Rig rig(SPECTRAL_LINK);
        for (const QByteArray request : { "R1:FREQ", "R1:IFBW", "R1:AFC" })
            rig.queue(Query, request);
        QVERIFY(rig.far.waitForFrame("R1:FREQ"));
        // Read without a pass of the event loop: delivered, not dispatched yet.
        rig.far.sendFrame(answer);
        QVERIFY(rig.link.port().waitForReadyRead(5000));
        QVERIFY(!rig.delivered.isEmpty());
        QVERIFY(rig.link.txmtCmdQueue().inFlight());
    }
}

void LinkTest::countdown()
{
    for (const auto &[type, startupSeconds, first] :
         { std::tuple(SPECTRAL_LINK, 7, 2), std::tuple(COMMAND_LINK, 3, 3), std::tuple(COMMAND_LINK, -1, 60) }) {
        Rig rig(type, startupSeconds);
        QLabel label;
        label.show();
        rig.link.StartEstablishCommTmr(kLong, &label);
        const auto labelAfterTick = [&] {
            rig.link.EstablishCommTmr_Tick();
            return label.text().toInt();
        };
        for (int second = first; second > 0; --second)
            QCOMPARE(labelAfterTick(), second);

        // Both versions are queried at every third tick; only an answer to the first one counts.
        rig.far.sendFrame("U0:VER:9.9");
        for (const QByteArray answer : { "\x15", "U0:VERTSKB:1.7" }) {
            QVERIFY(rig.settle());
            QVERIFY(rig.link.channels().isEmpty());
            QVERIFY(label.isVisible());
            QCOMPARE(labelAfterTick(), 0);
            QVERIFY(rig.waitInFlight("U0:VER"));
            rig.timeOutNow();
            QVERIFY(rig.waitInFlight("U0:VERTSKB"));
            rig.far.sendFrame(answer);
            QCOMPARE(labelAfterTick(), 2);
            QCOMPARE(labelAfterTick(), 1);
        }
        QCOMPARE(labelAfterTick(), 0);
        QVERIFY(rig.waitInFlight("U0:VER"));
        rig.far.sendFrame("U0:VER:3.4");
        QCOMPARE(labelAfterTick(), 2);
        QVERIFY(rig.waitInFlight("U0:VERTSKB"));
        QVERIFY(label.isHidden());
        QCOMPARE(qobject_cast<UniversalChan *>(rig.link.channels().value(0))->verTsMain(), u"3.4"_s);
        rig.far.nak();
        QVERIFY(rig.far.waitForFrame("U0:SYSID:RACK-7"));
        const QByteArrayList round{ "U0:VER", "U0:VERTSKB" };
        QCOMPARE(rig.far.frames(), round + round + round + QByteArrayList{ "U0:SYSID:RACK-7" });
    }
}

int main(int argc, char *argv[])
{
    QApplication application(argumentCount, arguments);
    LinkTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_link.moc"
