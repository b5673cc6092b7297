#include "support/LinkBench.h"
#include "support/SimulatedChassis.h"

#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

const QString kFrontPanel = QStringLiteral(ZIRVO_BIN_DIR "/zirvo-frontpanel");

} // namespace

/// The shipped program, started as a user starts it: its arguments, its end by signals, and the whole way from the
/// keyboard to the chassis and back.
class ProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ::signal(SIGHUP, SIG_DFL); } // the programs take over what is ignored here
    void withoutIdentifier();
    void legacyBoard_data();
    void legacyBoard();
    void endsBySignal_data();
    void endsBySignal();
    void endsWithChassis_data();
    void endsWithChassis();
    void fromKeyToChassis();
    void chassisBroughtBack();
};

void ProgramTest::withoutIdentifier()
{
    LinkBench bench;
    Screen screen;
    Program program(kFrontPanel, {});
    QVERIFY(screen.focus(u"^Software Info$"_s));
    QVERIFY(screen.operate({ u"key"_s, u"Return"_s }));
    QVERIFY(program.ends(1));
    QCOMPARE(bench.command().bytes(), QByteArray());
}

void ProgramTest::legacyBoard_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("legacy");
    QTest::newRow("second argument") << QStringList{ u"RACK-7"_s, u"-legacyboard"_s } << true;
    QTest::newRow("only argument") << QStringList{ u"-legacyboard"_s } << true;
    QTest::newRow("other spelling") << QStringList{ u"RACK-7"_s, u"-LegacyBoard"_s } << false;
}

void ProgramTest::legacyBoard()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, legacy);
    LinkBench bench;
    FarEnd legacyCommand(bench.path(u"ttyUSB3"_s));
    FarEnd &used = legacy ? legacyCommand : bench.command();
    used.setValue("U0:VER", "3.4");
    used.setAnswering(true);
    const Program program(kFrontPanel, arguments);
    QVERIFY(used.waitForFrame("U0:SYSID:" + arguments.first().toLatin1(), kStartMs));
    QCOMPARE((legacy ? bench.command() : legacyCommand).bytes(), QByteArray());
}

void ProgramTest::endsBySignal_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<int>("startupSeconds");
    QTest::addColumn<QByteArray>("moment"); // a request that is not answered, or the last one
    QTest::addColumn<QByteArray>("then");   // what happens to the cable before the signal
    const auto row = [](const char *name, int signal, int startupSeconds, const char *moment, const char *then = "") {
        QTest::newRow(name) << signal << startupSeconds << QByteArray(moment) << QByteArray(then);
    };
    for (const auto &[name, signal] : { std::pair("SIGTERM", SIGTERM), std::pair("SIGINT", SIGINT) }) {
        row(name + QByteArray(" during the countdown"), signal, 60, "U0:TRON:OFF");
        row(name + QByteArray(" while settings are read"), signal, 0, "R1:FLST");
        row(name + QByteArray(" when live"), signal, 0, "U0:TRON:ON");
    }
    row("SIGHUP when live", SIGHUP, 0, "U0:TRON:ON");
    row("SIGTERM while settings are read anew", SIGTERM, 0, "U0:TRON:ON", "replug");
    row("SIGTERM before thousands of requests", SIGTERM, 0, "TM2-0:ADDR");
    row("SIGTERM while nothing goes out", SIGTERM, 0, "U0:TRON:ON", "jam");
}

void ProgramTest::endsBySignal()
{
    QFETCH(int, signal);
    QFETCH(int, startupSeconds);
    QFETCH(QByteArray, moment);
    QFETCH(QByteArray, then);
    LinkBench bench(startupSeconds);
    FarEnd &chassis = bench.command();
    QByteArrayList cards{ LinkBench::kReceivers };
    for (int card = 1; card < 100 && moment.startsWith("TM"); ++card)
        cards += "TM" + QByteArray::number(card);
    bench.fit(cards);
    if (!moment.startsWith("U0:"))
        chassis.ignore(moment); // holds the program in the middle of its start-up
    chassis.setAnswering(true);
    Program program(kFrontPanel, { u"RACK-7"_s });
    QVERIFY(chassis.waitForFrame(moment, kStartMs));
    if (then == "replug") {
        chassis.unplug();
        chassis.ignore("R2:FREQ");
        chassis.clear();
        chassis.plug();
        QVERIFY(chassis.waitForFrame("R2:FREQ", kStartMs));
    } else if (then == "jam") {
        chassis.jam();
    }
    // A terminal and a script behind it may both pass one Ctrl+C on: the second must not cut the end short.
    const QDeadlineTimer deadline(kStartMs);
    do
        QVERIFY(program.signal(signal));
    while (signal == SIGINT && !program.waitForFinished(0) && !deadline.hasExpired());
    QVERIFY2(program.ends(0), qPrintable(u"exit code %1"_s.arg(program.exitCode())));
    const int wanted = then == "replug" ? 1 : 2;
    QCOMPARE(waitUntil([&] { return chassis.frames().count("U0:TRON:OFF") == wanted; }, then == "jam" ? 100 : 5000),
             then != "jam");
    QVERIFY(then == "jam" || chassis.bytes().endsWith("\x02U0:TRON:OFF\x0D"));
}

void ProgramTest::endsWithChassis_data()
{
    QTest::addColumn<QByteArray>("orders"); // to the chassis, before the start and after the moment
    QTest::addColumn<QByteArray>("moment"); // the last request before the end
    QTest::addColumn<bool>("isHeard");      // whether the end reaches the chassis
    const auto row = [](const char *name, const QByteArray &orders, const QByteArray &moment, bool isHeard = true) {
        QTest::newRow(name) << orders << moment << isHeard;
    };
    row("version asked", "silent U0:VER|", "U0:VER");
    row("cards asked", "silent U0:CLST|", "U0:CLST");
    row("settings read", "silent R2:FREQ|", "R2:FREQ");
    row("live, flooded", "|flood 4000 20", "U0:TRON:ON");
    row("wait box open", "|send U0:PDONE:0", "U0:TRON:ON");
    row("chassis boots", "|power-cycle 20", "U0:TRON:ON");
    row("cable pulled", "|unplug command", "U0:TRON:ON", false);
}

void ProgramTest::endsWithChassis()
{
    QFETCH(QByteArray, orders);
    QFETCH(QByteArray, moment);
    QFETCH(bool, isHeard);
    SimulatedChassis chassis;
    if (!orders.startsWith('|'))
        QVERIFY(chassis.order(orders.split('|')[0]).startsWith("ok"));
    Program program(kFrontPanel, { u"RACK-7"_s });
    QVERIFY(waitUntil([&] { return chassis.requests().contains(moment); }, kStartMs));
    if (!orders.endsWith('|'))
        QVERIFY(chassis.order(orders.split('|')[1]).startsWith("ok"));
    QVERIFY(program.signal(SIGTERM));
    QVERIFY2(program.ends(0), qPrintable(u"exit code %1"_s.arg(program.exitCode())));
    const auto isLast = [&] {
        const QByteArrayList all = chassis.requests();
        return all.count("U0:TRON:OFF") == 2 && all.constLast() == "U0:TRON:OFF";
    };
    QCOMPARE(waitUntil(isLast, isHeard ? 5000 : 100), isHeard);
}

void ProgramTest::fromKeyToChassis()
{
    SimulatedChassis chassis;
    Screen screen;
    Program program(kFrontPanel, { u"RACK-7"_s });
    QVERIFY(waitUntil([&] { return chassis.requests().contains("U0:TRON:ON"); }, kStartMs));
    QVERIFY(screen.focus(u"SystemID: RACK-7"_s));

    const auto order = [&](const QByteArray &command) { return chassis.order(command); };
    // Tunes the first receiver; whether this frequency is asked for once and @p inForce holds afterwards. The focus
    // goes back to the neutral place 3 s after the last key, so a try that came too late is made again from there.
    const auto tune = [&](const QString &frequency, const QByteArray &inForce) {
        const QByteArray request = "R1:FREQ:" + frequency.toLatin1();
        const auto arrived = [&] { return chassis.requests().count(request) == 1; };
        for (int attempt = 0; attempt < 4 && !arrived(); ++attempt) {
            const QStringList way = attempt > 0 ? QStringList{ u"key"_s, u"Tab"_s } : QStringList();
            if (!screen.operate(way + QStringList{ u"key"_s, u"ctrl+a"_s, u"type"_s, u"--args"_s, u"1"_s, frequency,
                                                   u"key"_s, u"Return"_s }) ||
                waitUntil(arrived, 4000))
                break;
        }
        return arrived() && order("show").contains("R1:FREQ:" + inForce);
    };
    QVERIFY(screen.operate({ u"key"_s, u"Tab"_s }));
    QVERIFY(tune(u"2261.5"_s, "2261.5"));
    QVERIFY(order("refuse R1:FREQ 1").startsWith("ok"));
    QVERIFY(tune(u"2262.5"_s, "2261.5"));
    QVERIFY(tune(u"2263.5"_s, "2263.5"));
    QCOMPARE(chassis.requests().count("R1:FREQ:2261.5"), 1); // what snapped back was shown, not sent
    QVERIFY(order("power-cycle 0").startsWith("ok"));
    QVERIFY(tune(u"2264.5"_s, "2264.5"));

    QVERIFY(program.signal(SIGTERM));
    QVERIFY(program.ends(0));
    QVERIFY(waitUntil([&] { return chassis.requests().constLast() == "U0:TRON:OFF"; }));
}

/// The remote client's program saves a chassis through the head, and puts back what was changed meanwhile.
void ProgramTest::chassisBroughtBack()
{
    SimulatedChassis chassis;
    Program head(kFrontPanel, { u"RACK-7"_s });
    // Exit code and output of one run
    const auto client = [&chassis](const QStringList &arguments) {
        const auto outcome = chassis.client(arguments);
        return QByteArray::number(outcome.exitCode) + ' ' + outcome.output;
    };
    const QString file = chassis.path(u"rack.json"_s);
    QVERIFY(waitUntil([&] { return client({ u"get"_s, u"SP1:SPAN"_s }) == "0 SP1:SPAN 10\n"; }, kStartMs));
    QCOMPARE(client({ u"dump"_s, file }), "0 ");
    for (const QByteArray change : { "R1 FREQ 2299.5", "R2 IFBW 2", "C1 CMOD 1", "D1 DMOD 4", "D1 RATEA 1000000",
                                     "D2 LBWB 0.02", "T1 TGAINCH1 99", "TM1-2 RMIP 10.9.8.7", "U0 SLAVE 1" }) {
        QVERIFY(chassis.order("set " + change).startsWith("ok"));
    }
    QVERIFY(chassis.order("refuse R2:IFBW").startsWith("ok"));
    QVERIFY(waitUntil([&] { return client({ u"get"_s, u"U0:SLAVE"_s }) == "0 U0:SLAVE 1\n"; }));
    QVERIFY(client({ u"apply"_s, file }).contains("R2:IFBW wanted 4, still 2"));
    QVERIFY(chassis.order("refuse off").startsWith("ok"));
    QVERIFY(client({ u"apply"_s, file }).contains("1 changed back, 0 refused"));
    QCOMPARE(
        client({ u"get"_s, u"R1:FREQ"_s, u"R2:IFBW"_s, u"D1:RATEA"_s, u"D2:LBWB"_s, u"TM1-2:RMIP"_s, u"U0:SLAVE"_s }),
        "0 R1:FREQ 2250.5\nR2:IFBW 4\nD1:RATEA 5000000\nD2:LBWB 0.5\nTM1-2:RMIP 192.168.7.102\nU0:SLAVE 0\n");
    QVERIFY(head.signal(SIGTERM) && head.ends(0));
}

QTEST_MAIN(ProgramTest)
#include "tst_program.moc"
