#include "support/SimHarness.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QSet>
#include <QTest>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

/// The shipped simulator, started as a user starts it.
class SimulatorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wrongArguments();
    void conversations_data();
    void conversations();
    void overtakes();
    void presetFile();
    void fullDisk();
    void reconfigures();
    void sameSeedSameReports();
    void garblesAndFloods();
    void blocks_data();
    void blocks();
    void powerCycle();
    void linkNames();
    void clientsComeAndGo();
};

void SimulatorTest::wrongArguments()
{
    const std::initializer_list<std::pair<QString, QByteArray>> cases{
        { u"--seed 1"_s, "--device-dir is required" },
        { u"--device-dir= -- x"_s, "unexpected \"x\"" },
        { u"--device-dir d --seed -5"_s, "--seed takes a whole number" },
        { u"--device-dir d --boot-seconds=-1"_s, "--boot-seconds takes a number from 0 to 3600" },
        { u"--device-dir d --report-hz 5 --report-hz 51"_s, "--report-hz takes a number from 0.1 to 50" },
        { u"--bogus=1 --help"_s, "Unknown option 'bogus'." },
        { u"--help=1 -ab"_s, "Unexpected value after '--help'." },
        { u"-help --seed"_s, "Missing value after '--seed'." },
    };
    for (const auto &[arguments, message] : cases) {
        QProcess program;
        program.start(QStringLiteral(ZIRVO_BIN_DIR "/zirvo-chassis-sim"), arguments.split(u' '));
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.readAllStandardError(), "zirvo-chassis-sim: " + message + " (see --help)\n");
        QCOMPARE(program.exitCode(), 2);
    }
}

void SimulatorTest::conversations_data()
{
    QTest::addColumn<QByteArray>("steps");
    const auto row = [](const char *tag, const char *steps) { QTest::newRow(tag) << QByteArray(steps); };
    row("faults",
        "$refuse R1:FREQ 1 > ok.*; R1:FREQ:2260.5 > NAK; R1:FREQ > :2250.5; $silent R1 > ok.*; R1:FREQ:2260.5 > ;"
        "$silent off > ok off; R1:FREQ > :2250.5; $lose 1 > ok.*; R1:FREQ:2260.5 > ;"
        "R1:FREQ > :2260.5; $lose R2 #3 > ok.*; R2:AFC:0 > ACK; R2:AFC:2 > ACK; R2:AFC:1 > ; R2:AFC > :1;"
        "$refuse R1:AFC > ok.*; $lose 100% > ok.*; $lose off > ok off; R1:AFC:0 > NAK");
    row("values", "R1:FREQ:2260.5 > ACK; R2:NAME:Far  East > ACK; $values R1 > ok R1:NAME:.*\tR1:FREQ:2260.5\t.*;"
                  "$values R2 > ok R2:NAME:Far  East\t.*; $values X1 > error: .*");
    row("send", "$send U0:UPDT:0 > ok; U0:TMRF > U0:UPDT:0 U0:TMRF:1; $raw 41 02 5231 0d > ok; U0:TMRF > R1 U0:TMRF:1;"
                "$set R2 NAME Far  East > ok; R2:NAME > R2:NAME:Far  East R2:NAME:Far  East");
    row("bad orders", "$refuse R1 none > error: .*; $silent 0 > error: .*; $delay x > error: .*;"
                      "$lose 0% > error: .*; $lose 101% > error: .*; $lose R1 #0 > error: .*; $delay 9-5 > error: .*;"
                      "$delay 5 R1 3 > error: .*; $raw 0x > error: .*;"
                      "$set R1 FREQ 9 > error: .*; $set R1 SSLV 0 > error: .*; $nonsense > error: .*");
}

void SimulatorTest::conversations()
{
    QFETCH(QByteArray, steps);
    SimHarness sim;
    QCOMPARE(sim.talk(steps), ""_ba);
}

/// Each late answer leaves in its own time, with the value at the time of the request.
void SimulatorTest::overtakes()
{
    SimHarness sim;
    QCOMPARE(sim.talk("$delay 900 R1:FREQ > ok; $delay 200-400 R1:AFC > ok"), ""_ba);
    QElapsedTimer clock;
    clock.start();
    sim.write("R1:FREQ");
    sim.write("R1:FREQ:2260.5");
    sim.write("R1:AFC");
    sim.write("R2:AFC");
    QCOMPARE(sim.nextFrame(), "R2:AFC:1"_ba);
    QCOMPARE(sim.nextFrame(), "R1:AFC:1"_ba);
    QVERIFY2(clock.elapsed() >= 180, "too early by more than the step in which it is asked for");
    QCOMPARE(sim.nextFrame(), "R1:FREQ:2250.5"_ba);
    QCOMPARE(sim.nextFrame(), "ACK"_ba);
}

void SimulatorTest::presetFile()
{
    const QTemporaryDir folder;
    const QStringList keep{ u"--presets"_s, folder.filePath(u"presets"_s) };
    QCOMPARE(SimHarness(keep).talk("R2:NAME:East > ACK; U0:STORE:pass7 > ACK; U0:STORE:b > ACK; U0:DELPR:b > ACK"),
             ""_ba);
    SimHarness again(keep);
    QCOMPARE(again.talk("U0:PLIST > :pass7[ ]; R2:NAME > :Rcvr CH.2; U0:RESTORE:pass7 > ACK.*; R2:NAME >> .*:East"),
             ""_ba);
}

/// The chassis keeps running; the trace holds whole lines, and an older trace is replaced only when all else is in
/// order.
void SimulatorTest::fullDisk()
{
    QTemporaryDir folder;
    QFile trace(folder.filePath(u"trace"_s));
    QVERIFY(trace.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    QCOMPARE(trace.write("older\n"), 6);
    const QStringList traced{ u"--trace"_s, trace.fileName() };
    QCOMPARE(SimHarness(traced + QStringList{ u"--device-dir"_s, trace.fileName() }).end(), 2);
    QVERIFY(trace.seek(0));
    QCOMPARE(trace.readAll(), "older\n"_ba);

    rlimit room = {};
    QVERIFY(::getrlimit(RLIMIT_FSIZE, &room) == 0);
    const rlimit little{ 300, room.rlim_max };
    QVERIFY(::setrlimit(RLIMIT_FSIZE, &little) == 0);
    SimHarness sim(traced + QStringList{ u"--presets"_s, folder.filePath(u"presets"_s) });
    QVERIFY(::setrlimit(RLIMIT_FSIZE, &room) == 0);
    QCOMPARE(sim.talk("U0:STORE:p > NAK; U0:PLIST > :.*; R1:FREQ:2260.5 > ACK; R1:FREQ > :2260.5; R2:AFC > :.*"),
             ""_ba);
    QCOMPARE(sim.end(), 1);
    QVERIFY(trace.seek(0));
    const QByteArray text = trace.readAll();
    QVERIFY2(
        QRegularExpression(u"^(0\\.\\d+ [<>] command [^\\n]+\\n){6,}$"_s).match(QString::fromLatin1(text)).hasMatch(),
        text);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList(u"trace"_s));
}

void SimulatorTest::reconfigures()
{
    SimHarness sim;
    QCOMPARE(sim.order("reconfigure"), "ok"_ba);
    const QByteArrayList frames = sim.framesUntil("U0:UPDT:1");
    QCOMPARE(frames.first(), "U0:UPDT:0"_ba);
    QCOMPARE(frames.last(), "U0:UPDT:1"_ba);
    QVERIFY(frames.contains("R1:IFBW:4"));
    QVERIFY(frames.contains("R2:NAME:Rcvr CH.2"));
}

void SimulatorTest::sameSeedSameReports()
{
    QTemporaryDir folder;
    QFile script(folder.filePath(u"script"_s));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("# when every client has long been there\n@2 set U0 TRON ON\nwait 0.3\nset U0 NAME End\n");
    script.close();
    const QStringList common{ u"--report-hz=50"_s, u"--script"_s, script.fileName(), u"--seed"_s };
    SimHarness first(common + QStringList(u"7"_s));
    SimHarness second(common + QStringList(u"7"_s));
    SimHarness other(common + QStringList(u"8"_s));
    const QByteArrayList reports = first.framesUntil("U0:NAME:End");
    QCOMPARE(reports.first(), "U0:TRON:ON"_ba);
    QCOMPARE(reports.last(), "U0:NAME:End"_ba);
    QVERIFY(reports.size() > 100);
    QCOMPARE(second.framesUntil("U0:NAME:End"), reports);
    QVERIFY(other.framesUntil("U0:NAME:End") != reports);
}

void SimulatorTest::garblesAndFloods()
{
    SimHarness sim;
    QCOMPARE(sim.order("garble 2"), "ok"_ba);
    sim.write("U0:NAME");
    sim.write("U0:NAME");
    QVERIFY(!sim.ask("U0:TMRF").contains("U0:NAME:Range Station 7 U0:NAME:Range Station 7"));
    QCOMPARE(sim.ask("U0:TMRF"), "U0:TMRF:1"_ba);
    // More than the line carries and the buffer takes.
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(sim.order("flood 50000 0.3"), "ok"_ba);
    QByteArray bytes;
    while (bytes.size() < 60'000) {
        QVERIFY(sim.sees(POLLIN));
        bytes += sim.readBytes();
    }
    QVERIFY(double(clock.nsecsElapsed()) / 1e9 >= double(bytes.size()) / 92160);
    const QRegularExpression whole(u"^(\x02R[12]:SSLV:-[0-9.]+\r)+"_s);
    QVERIFY(whole.match(QString::fromLatin1(bytes)).capturedEnd() > 59'900);
    QVERIFY2(!sim.order("show").endsWith("overruns=0"), "more than the buffer takes is lost");
    QVERIFY2(sim.ask("U0:TMRF").endsWith(" U0:TMRF:1"), "requests still get through");
}

void SimulatorTest::blocks_data()
{
    QTest::addColumn<QByteArray>("setting"); // 0 is off
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QByteArray>("first"); // bytes of a block
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("leastMs"); // for that many
    QTest::newRow("eye") << "D2 DSDM "_ba
                         << "1"_ba
                         << "\x02"
                            "DM2"_ba
                         << 2053 << 40 << 700;
    QTest::newRow("eye") << "D2 DSDM "_ba
                         << "3"_ba
                         << "\x02"
                            "DM2SD"_ba
                         << 17 << 4000 << 700;
    QTest::newRow("spectral") << "SP1 DATA "_ba
                              << "1"_ba
                              << "\x02SP1:RFFT:"_ba << 523 << 10 << 1800;
}

/// As many a second as the eye link carries, or five of the spectrum, until switched off.
void SimulatorTest::blocks()
{
    QFETCH(QByteArray, setting);
    QFETCH(QByteArray, value);
    QFETCH(QByteArray, first);
    QFETCH(int, size);
    QFETCH(int, count);
    QFETCH(int, leastMs);
    SimHarness sim;
    QVERIFY(sim.reopen(first.contains("SP1") ? "ttyUSB2" : "ttyUSB7", QTest::currentDataTag()));
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(sim.order("set " + setting + value), "ok"_ba);
    QByteArray bytes;
    while (bytes.count(first) <= count) {
        QVERIFY(sim.sees(POLLIN));
        bytes += sim.readBytes();
    }
    QVERIFY2(clock.elapsed() >= leastMs, "faster than the line or the card");
    QCOMPARE(bytes.lastIndexOf(first) - bytes.indexOf(first), qsizetype(size) * (bytes.count(first) - 1));
    sim.order("set " + setting + '0');
    const QDeadlineTimer deadline(3000);
    while (sim.sees(POLLIN, 300) && !deadline.hasExpired())
        (void)sim.readBytes();
    QVERIFY2(!deadline.hasExpired(), "it goes on");
}

void SimulatorTest::powerCycle()
{
    SimHarness sim({ u"--boot-seconds=0.7"_s });
    QCOMPARE(sim.talk("$show >> ok awake.*; no colon >> ; R1:FREQ:2260.5 > ACK; U0:SLAVE:1 > ACK; U0:REMOTE:1 > ACK;"
                      "U0:SYSID:ZX-17 > ACK; U0:STORE:p > ACK; U0:TRON:ON > ACK.*; $power-cycle > ok"),
             ""_ba);
    sim.write("R1:FREQ:2280.5");
    QCOMPARE(sim.talk("$show > ok booting.*; $show >> ok awake.*"), ""_ba);
    const QByteArray bytes = sim.readBytes();
    QVERIFY(bytes.contains("loading"));
    QVERIFY2(!bytes.contains('\x06'), "a booting chassis answers");
    QCOMPARE(sim.talk("U0:TRON > :OFF; U0:SLAVE > :0; R1:SLAVE > :0; U0:REMOTE > :0; U0:SYSID > :;"
                      "R1:FREQ > :2260.5; U0:PLIST > :p[ ]"),
             ""_ba);
}

void SimulatorTest::linkNames()
{
    SimHarness sim;
    const auto targets = [&sim](std::initializer_list<int> devices) {
        QSet<QString> terminals;
        for (const int device : devices)
            terminals.insert(QFileInfo(sim.path(u"ttyUSB%1"_s.arg(device))).canonicalFilePath()); // empty: none
        return terminals;
    };
    QCOMPARE(targets({ 0, 1, 2, 4, 5, 6 }).size(), 6);
    QCOMPARE(targets({ 3, 7, 2, 8, 9, 6 }), targets({ 0, 1, 2, 4, 5, 6 }));
    QCOMPARE(targets({ 0, 3 }).size(), 1);
    QCOMPARE(sim.order("unplug command"), "ok"_ba);
    QVERIFY(sim.sees(POLLHUP));
    QCOMPARE(targets({ 0, 3 }), QSet<QString>{ QString() });
    QVERIFY(!targets({ 1, 2, 4, 5, 6 }).contains(QString()));
    QCOMPARE(sim.order("plug command"), "ok"_ba);
    QVERIFY(sim.reopen());
    QCOMPARE(sim.ask("U0:TMRF"), "U0:TMRF:1"_ba);
    QCOMPARE(sim.end(), 0);
    QVERIFY(QDir(sim.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).isEmpty());
}

/// What a client leaves unread reaches no later one, and what it says before it leaves is still carried out.
void SimulatorTest::clientsComeAndGo()
{
    SimHarness sim;
    for (const char *name : { "ttyUSB3", "ttyUSB0" }) {
        QCOMPARE(sim.order("raw " + "\x02U0:OLD:1\r"_ba.repeated(2000).toHex()), "ok"_ba);
        QVERIFY2(sim.sees(POLLIN), "some wait unread, most are still to be sent");
        QVERIFY(sim.reopen(name));
        QCOMPARE(sim.talk("R1:NAME > :Rcvr CH.1"), ""_ba);
    }
    Terminal visitor;
    QVERIFY(sim.close());
    QVERIFY(visitor.open(sim.path(u"ttyUSB0"_s)));
    QCOMPARE(visitor.writeBytes("\x02R1:FREQ:2260.5\r"), 16);
    visitor.close();
    QVERIFY(sim.shows("R1:FREQ:2260.5"));
    QVERIFY(sim.open());
    QCOMPARE(sim.ask("U0:TMRF"), "U0:TMRF:1"_ba);
}

QTEST_GUILESS_MAIN(SimulatorTest)
#include "tst_simulator.moc"
