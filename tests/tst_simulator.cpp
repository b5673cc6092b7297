#include "support/SimHarness.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QSet>
#include <QTest>

#include <algorithm>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

/// What makes the head create a channel, looked for in the whole card list. The last kind has a link of its own.
const QList<std::pair<QByteArray, QString>> kChannelRules{
    { "R1", u"(?=.*0103).*0121"_s },
    { "R2", u"(?=.*0104).*0122"_s },
    { "C1", u".*010[59]"_s },
    { "D1", u"(?=.*K30[56]0).*DEMOD1|(?!.*K30[56]0).*(0101 K412|0101 K414V|0101 K9V|0107 K9V)"_s },
    { "D2", u"(?=.*K30[56]0).*DEMOD2|(?!.*K30[56]0).*(0102 K412|0102 K414V|0102 K9V|0108 K9V)"_s },
    { "D3", u"(?=.*K30[56]0).*DEMOD3|(?!.*K30[56]0).*(0109 K412|0109 K414V|0109 K424V)"_s },
    { "T1", u".*0110"_s },
    { "spectral or self-test", u".*(0170|0136)"_s },
};

/// What the head asks a receiver for at the start, and the status values.
const QByteArray kReceiverMnemonics =
    "NAME ACFE ANCF CAMP CAMF AMIP FLST CIFS FREQ IFLS IFBW AGCF AGCZ SLPA SLPB POLA POLB IMPA IMPB AGCT AFC AFCM PLYB "
    "AIFB CINP CIF1 CATN MANG SYNL SSLV MAFL RLST AGCA AGCB";

} // namespace

/// The shipped simulator, started as a user starts it.
class SimulatorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startUp_data();
    void startUp();
    void conversations_data();
    void conversations();
    void chance();
    void overtakes();
    void tellsEveryValue_data();
    void tellsEveryValue();
    void presets();
    void fullDisk();
    void speaksUnasked();
    void sameSeedSameReports();
    void garblesAndFloods();
    void powerCycle();
    void linksAndEnd();
};

void SimulatorTest::startUp_data()
{
    QTest::addColumn<QByteArray>("model");
    QTest::addColumn<QByteArray>("channels");
    const auto row = [](const char *family, const char *model, const char *channels) {
        QTest::newRow(family) << QByteArray(model) << QByteArray(channels);
    };
    row("demod-k3050", "K3060", "R1 R2 C1 D1 D2 D3 T1");
    row("qln424", "QLN424", "R1 R2 C1 D1 D2 D3");
    row("k412w", "K412W", "R1 R2 C1 D1 D2");
    row("qldx", "QLDX203", "R1 R2 C1 D1 D2");
    row("one-receiver", "VM5270", "R1");
    row("gaps", "QLN424", "R2 D2");
    row("empty", "", "");
}

void SimulatorTest::startUp()
{
    QFETCH(QByteArray, model);
    QFETCH(QByteArray, channels);
    SimHarness sim({ u"--family"_s, QString::fromLatin1(QTest::currentDataTag()) });
    QCOMPARE(sim.talk("U0:VER > :ZIRVO-.*; U0:SYSID:ZX-17 > ACK"), ""_ba);
    const QByteArray list = sim.ask("U0:CLST");
    QVERIFY(list.startsWith("U0:CLST:") && list.contains(model));
    QByteArrayList made;
    for (const auto &[channel, rule] : kChannelRules) {
        if (QRegularExpression(u"^(%1)"_s.arg(rule)).match(QString::fromLatin1(list)).hasMatch())
            made.append(channel);
    }
    QCOMPARE(made.join(' '), channels);
    for (const QByteArray receiver : { "R1", "R2" }) {
        for (const QByteArray &mnemonic : kReceiverMnemonics.split(' ')) {
            const QByteArray query = receiver + ':' + mnemonic;
            QCOMPARE(sim.ask(query).startsWith(query + ':'), channels.contains(receiver));
        }
    }
    QVERIFY(sim.ask("U0:TRON:ON").startsWith("ACK"));
}

void SimulatorTest::conversations_data()
{
    QTest::addColumn<QByteArray>("steps");
    const auto row = [](const char *tag, const char *steps) { QTest::newRow(tag) << QByteArray(steps); };
    row("no answer", "U0:NOSUCH > ; X9:FREQ > ; D4:DMOD > ; no colon > ; U0:STORE > ; U0:TLST > :TM1 2.1");
    row("refused",
        "U0:NOSUCH:1 > NAK; X9:FREQ:2250.5 > NAK; U0:RESTORE:none > NAK; U0:TLST:1 > NAK; U0:TLST > :TM1 2.1;"
        "U0:STORE:two words > NAK; U0:PLIST > :; U0:TRON:YES > NAK; U0:TRON > :OFF; R2:SSLV:-10 > NAK");
    row("system", "U0:SLAVE:1 > ACK; R2:SLAVE > :1; U0:SLAVE:3 > NAK; U0:SLAVE > :1; U0:TIME:23:10:00 > ACK;"
                  "U0:TIME:12:61:00 > NAK; U0:TIME > :23:1.*; U0:NAME:Van: north > ACK; U0:NAME > :Van: north");
    row("ranges", "R1:FREQ:2395.5 > ACK; R1:FREQ:2395.6 > NAK; R1:FREQ > :2395.5; R1:FREQ:1850.4 > NAK;"
                  "R1:FREQ:1850.3 > ACK; R1:FREQ:1435.4 > NAK; R1:FREQ:1435.5 > ACK; R1:FREQ > :1435.5");
    row("numbers", "R1:FREQ:2e3 > NAK; R1:FREQ:nan > NAK; R1:FREQ: > NAK; R1:IFBW:-1 > NAK; R1:IFBW:7 > NAK;"
                   "R1:IFBW > :4; R1:IFBW:6 > ACK; R1:IFBW > :6; R2:AFCM:-201 > NAK; R2:AFCM:-200 > ACK;"
                   "R2:AFCM > :-200; R2:AFC:5 > NAK; R2:AGCF:2 > NAK; R2:IFGCM:17 x > ACK; R2:IFGCM > :17 x");
    row("tuning", "$signal 2300.5 -50 > ok; R1:FREQ:2300.5 > ACK; R1:SYNL > :0; R1:SYNL >> :1; R1:SSLV >> :-50.0;"
                  "R1:MAFL >> :1; R2:SSLV > :-[67].*; R2:FREQ:2390.5 > ACK; R2:SYNL >> :1; R2:SSLV >> :-(99|100).*;"
                  "R2:MAFL > :0; R2:IFBW:0 > ACK; R2:SSLV >> :-11[234].*");
    row("AGC and AFC",
        "$signal 2300.5 -50 > ok; R1:FREQ:2300.5 > ACK; R1:AGCA >> :3[45]..; R1:AGCB >> :(69|70)..;"
        "R1:POLA:1 > ACK; R1:AGCA > :-3[45]..; R1:ANCF:-20 > ACK; R1:ACFE:1 > ACK; R1:SSLV > :-70.0;"
        "R1:AGCZ:1 > ACK; R1:SSLV > :0.0; R1:AGCF:1 > ACK; $signal 2300.5 -30 > ok; R1:SSLV >> :20.0;"
        "R1:AGCB > :..?; R1:AGCF:0 > ACK; R1:AGCB >> :(19|20)..; $signal 2310.1 -50 > ok; R1:FREQ:2310.0 > ACK;"
        "R1:RLST >> :100; R1:AFCM:-55 > ACK; R1:AFC:4 > ACK; R1:RLST >> :-55; R1:MAFL > :0");
    row("refuse", "$refuse R1:FREQ 2 > ok.*; R1:FREQ:2260.5 > NAK; R1:FREQ > NAK; R1:FREQ > :2250.5;"
                  "$refuse R2 > ok.*; R2:FREQ > NAK; R2:AFC:1 > NAK; R1:AFC:1 > ACK; $refuse off > ok off;"
                  "R2:AFC:1 > ACK; $refuse 1 > ok.*; R2:FREQ > NAK; R2:FREQ > :2275.5");
    row("silent", "$silent R1:FREQ 2 > ok.*; R1:FREQ:2260.5 > ; R1:FREQ > ; R1:FREQ > :2250.5; $silent R2 > ok.*;"
                  "R2:FREQ > ; R2:AFC:1 > ; R1:AFC:1 > ACK; $silent off > ok off; R2:AFC:1 > ACK");
    row("lose", "$lose R1:FREQ 2 > ok.*; R1:FREQ:2260.5 > ; R1:FREQ > ; R1:FREQ > :2260.5; $lose R2 #3 > ok.*;"
                "R2:AFC:0 > ACK; R1:AFC:2 > ACK; R2:AFC > :0; R2:AFC:2 > ; R2:AFC > :2; $refuse R1:AFC > ok.*;"
                "$lose 100% > ok.*; $lose off > ok off; R1:AFC:0 > NAK");
    row("values", "R1:FREQ:2260.5 > ACK; R2:NAME:Far  East > ACK; $values R1 > ok R1:NAME:.*\tR1:FREQ:2260.5\t.*;"
                  "$values R2 > ok R2:NAME:Far  East\t.*; $values X1 > error: .*");
    // The answer may come behind that to the later query, too.
    row("delay", "$delay 1000 U0:NAME > ok; U0:NAME > ; U0:TMRF >> ( ?U0:(NAME:Range Station 7|TMRF:1)){2};"
                 "$delay 0 > ok; U0:NAME > :Range Station 7");
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

void SimulatorTest::chance()
{
    const auto refusals = [](const QString &seed) {
        SimHarness sim({ u"--seed"_s, seed });
        sim.order("refuse R1:FREQ 30%");
        QByteArray verdicts;
        while (verdicts.size() < 100)
            verdicts += sim.ask("R1:FREQ") == "NAK" ? 'x' : '.';
        return verdicts;
    };
    const QByteArray first = refusals(u"7"_s);
    QVERIFY2(first.count('x') > 15 && first.count('x') < 45, first);
    QCOMPARE(refusals(u"7"_s), first);
    QVERIFY(refusals(u"8"_s) != first);
}

/// Each late answer leaves in its own time, and tells what was in force when it was asked for.
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

void SimulatorTest::tellsEveryValue_data()
{
    QTest::addColumn<QByteArray>("addresses"); // as the values tell them
    QTest::newRow("demod-k3050") << "C1 D1 D2 D3 R1 R2 S1 SP1 SP2 SP3 T1 TM1-0 TM1-1 TM1-2 TM1-3 U0"_ba;
    QTest::newRow("gaps") << "D2 R2 TM2-0 TM2-1 TM2-2 TM2-3 U0"_ba;
}

void SimulatorTest::tellsEveryValue()
{
    QFETCH(QByteArray, addresses);
    SimHarness sim({ u"--family"_s, QString::fromLatin1(QTest::currentDataTag()) });
    QSet<QByteArray> told;
    for (const QByteArray &text : sim.order("values").sliced(3).split('\t')) {
        const QByteArray address = text.left(text.indexOf(':'));
        told.insert(address);
        if (address.startsWith('S') || text.startsWith("U0:VERTSKB:"))
            continue; // asked on a link of its own; asked by ask() itself
        const bool isRegister = text.contains(":RDRG:");
        const QByteArray key = text.left(text.indexOf(':', address.size() + 1) + (isRegister ? 3 : 0));
        QVERIFY2(sim.ask(key).startsWith(key), text); // readings move on meanwhile
    }
    QByteArrayList sorted = told.values();
    std::sort(sorted.begin(), sorted.end());
    QCOMPARE(sorted.join(' '), addresses);
}

void SimulatorTest::presets()
{
    const QTemporaryDir folder;
    const QStringList keep{ u"--presets"_s, folder.filePath(u"presets"_s) };
    {
        SimHarness sim(keep);
        QCOMPARE(sim.talk("R1:FREQ:2260.5 > ACK; R2:NAME:East > ACK; U0:TMRF:0 > ACK; U0:STORE:pass7 > ACK;"
                          "U0:STORE:b > ACK; U0:PLIST > :b pass7[ ]; R1:FREQ:2270.5 > ACK; R2:NAME:West > ACK;"
                          "U0:TMRF:1 > ACK; U0:SLAVE:1 > ACK; R2:AFC:1 > ACK"),
                 ""_ba);
        sim.write("U0:RESTORE:pass7");
        QByteArrayList frames = sim.framesUntil("U0:PDONE:1");
        QVERIFY(frames.startsWith("ACK") && frames.indexOf("U0:PDONE:0") == 1 && frames.endsWith("U0:PDONE:1"));
        std::sort(frames.begin() + 2, frames.end() - 1);
        QCOMPARE(frames.sliced(2, frames.size() - 3).join(' '), "R1:FREQ:2260.5 R2:NAME:East U0:SLAVE:0 U0:TMRF:0"_ba);
        QCOMPARE(sim.talk("R1:FREQ > :2260.5; R2:NAME > :East; U0:DELPR:b > ACK"), ""_ba);
    }
    SimHarness again(keep);
    QCOMPARE(again.talk("U0:PLIST > :pass7[ ]; R2:NAME > :Rcvr CH.2; U0:RESTORE:pass7 > ACK.*; R2:NAME >> .*:East"),
             ""_ba);
}

/// The chassis goes on; of the trace there are whole lines, and an older trace goes only when all else is in order.
void SimulatorTest::fullDisk()
{
    QTemporaryDir folder;
    QFile trace(folder.filePath(u"trace"_s));
    QVERIFY(trace.open(QIODevice::ReadWrite) && trace.write("older\n") == 6 && trace.flush());
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
    QVERIFY2(text.size() > 200 && text.startsWith("0.") && text.endsWith('\n'), text);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList(u"trace"_s));

    SimHarness full({ u"--trace"_s, u"/dev/full"_s });
    QCOMPARE(full.talk("R1:FREQ:2260.5 > ACK"), ""_ba);
    QCOMPARE(full.end(), 1);
}

void SimulatorTest::speaksUnasked()
{
    SimHarness sim({ u"--report-hz=25"_s });
    QElapsedTimer clock;
    clock.start();
    sim.write("U0:TRON:ON");
    QHash<QByteArray, int> seen;
    while (seen.value("R2:AGCB") < 30 && !seen.contains("(nothin"))
        ++seen[sim.nextFrame().left(7)];
    QVERIFY2(clock.elapsed() >= 800, "far too many a second");
    for (const char *mnemonic : { "SYNL", "SSLV", "MAFL", "RLST", "AGCA", "AGCB" })
        QVERIFY2(qAbs(seen.value("R1:"_ba + mnemonic) - 30) <= 1, mnemonic);
    sim.write("U0:TRON:OFF");
    sim.framesUntil("ACK");
    QVERIFY(!sim.sees(POLLIN, 200));
    sim.order("reconfigure");
    const QByteArrayList frames = sim.framesUntil("U0:UPDT:1");
    QVERIFY(frames.startsWith("U0:UPDT:0") && frames.contains("R1:IFBW:4") && frames.contains("R2:NAME:Rcvr CH.2") &&
            frames.endsWith("U0:UPDT:1"));
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
    QVERIFY(reports.startsWith("U0:TRON:ON") && reports.size() > 100 && reports.endsWith("U0:NAME:End"));
    QCOMPARE(second.framesUntil("U0:NAME:End"), reports);
    QVERIFY(other.framesUntil("U0:NAME:End") != reports);
}

void SimulatorTest::garblesAndFloods()
{
    SimHarness sim;
    QCOMPARE(sim.order("garble 20"), "ok"_ba);
    for (int message = 0; message < 20; ++message)
        sim.write("U0:NAME");
    sim.write("U0:TMRF");
    QByteArray bytes;
    while (!bytes.endsWith("\x02U0:TMRF:1\r")) {
        QVERIFY2(sim.sees(POLLIN), "the damage goes on");
        bytes += sim.readBytes();
    }
    QVERIFY(!bytes.contains("\x02U0:NAME:Range Station 7\r"));
    const auto withoutEnd = bytes.count("\x02U0:NAME:Range Station 7\x02");
    QVERIFY2(withoutEnd > 0 && withoutEnd < 20, "both kinds of damage");
    // More than the line carries and the buffer takes.
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(sim.order("flood 50000 0.3"), "ok"_ba);
    bytes.clear();
    while (bytes.size() < 60'000) {
        QVERIFY(sim.sees(POLLIN));
        bytes += sim.readBytes();
    }
    QVERIFY(double(clock.nsecsElapsed()) / 1e9 >= double(bytes.size()) / 92160);
    QVERIFY(QRegularExpression(u"^(\x02R[12]:SSLV:-[0-9.]+\r)+"_s).match(QString::fromLatin1(bytes)).capturedEnd() >
            59'900);
    QVERIFY2(!sim.order("show").endsWith("overruns=0"), "more than the buffer takes is lost");
    QVERIFY2(sim.ask("U0:TMRF").endsWith(" U0:TMRF:1"), "requests still get through");
}

void SimulatorTest::powerCycle()
{
    SimHarness sim({ u"--boot-seconds=0.7"_s });
    QCOMPARE(sim.talk("$show >> ok awake.*; no colon > .*; R1:FREQ:2260.5 > ACK; U0:SLAVE:1 > ACK; U0:REMOTE:1 > ACK;"
                      "U0:SYSID:ZX-17 > ACK; U0:STORE:p > ACK; U0:TRON:ON > ACK.*; $power-cycle > ok"),
             ""_ba);
    sim.write("R1:FREQ:2280.5");
    QCOMPARE(sim.talk("$show > ok booting.*; $show >> ok awake.*"), ""_ba);
    const QByteArray bytes = sim.readBytes();
    QVERIFY2(bytes.contains("loading") && !bytes.contains('\x06'), "chatters and does not answer");
    QCOMPARE(sim.talk("U0:TRON > :OFF; U0:SLAVE > :0; R1:SLAVE > :0; U0:REMOTE > :0; U0:SYSID > :;"
                      "R1:FREQ > :2260.5; U0:PLIST > :p[ ]"),
             ""_ba);
}

void SimulatorTest::linksAndEnd()
{
    QCOMPARE(SimHarness({ u"--report-hz=51"_s }).end(), 2);
    SimHarness sim;
    for (const char *name : { "ttyUSB3", "ttyUSB0" }) {
        QCOMPARE(sim.order("raw " + "\x02U0:OLD:1\r"_ba.repeated(2000).toHex()), "ok"_ba);
        QVERIFY2(sim.sees(POLLIN), "some wait unread, most are still to be sent");
        QVERIFY(sim.close() && sim.open(name));
        QCOMPARE(sim.talk("R1:NAME > :Rcvr CH.1"), ""_ba);
    }
    const auto target = [&sim](int device) { return QFile::symLinkTarget(sim.path(u"ttyUSB%1"_s.arg(device))); };
    for (int device = 0; device < 10; ++device)
        QVERIFY(QFileInfo::exists(target(device)));
    QVERIFY(target(0) == target(3) && target(1) == target(7) && target(4) == target(8) && target(5) == target(9));
    QVERIFY(sim.order("unplug command") == "ok" && sim.sees(POLLHUP) && target(0).isEmpty() && target(3).isEmpty() &&
            QFileInfo::exists(target(1)));
    QVERIFY(sim.order("plug command") == "ok" && sim.close() && sim.open());
    QCOMPARE(sim.talk("U0:TMRF > :1"), ""_ba);
    Terminal visitor;
    QVERIFY(sim.close() && visitor.open(sim.path(u"ttyUSB0"_s)) && visitor.writeBytes("\x02R1:FREQ:2260.5\r") == 16);
    visitor.close();
    QVERIFY2(sim.shows("R1:FREQ:2260.5") && sim.open() && !sim.sees(POLLIN, 200), "heard, and the answer is lost");
    QVERIFY(sim.close() && sim.open("ttyUSB4", "remote"));
    sim.write("U0:VER");
    QVERIFY2(!sim.sees(POLLIN, 200), "without a far end a link says nothing, and does not echo");
    QCOMPARE(sim.end(), 0);
    QVERIFY(QDir(sim.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).isEmpty());
}

QTEST_GUILESS_MAIN(SimulatorTest)
#include "tst_simulator.moc"
