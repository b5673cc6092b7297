#include "SimHarness.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <csignal>

namespace {

const QByteArray kAck("\x06");
const QByteArray kNak("\x15");

/// The channels that a card list makes, by the rules the display head goes by.
QByteArray channelsOf(const QByteArray &list)
{
    const auto holdsAny = [&list](std::initializer_list<const char *> texts) {
        return std::any_of(texts.begin(), texts.end(), [&list](const char *text) { return list.contains(text); });
    };
    const bool older = holdsAny({ "K3050", "K3060" });
    QByteArrayList channels;
    const auto add = [&channels](bool exists, const char *name) {
        if (exists)
            channels.append(name);
    };
    add(list.contains("0103") && list.contains("0121"), "R1");
    add(list.contains("0104") && list.contains("0122"), "R2");
    add(holdsAny({ "0105", "0109" }), "C1");
    add(older ? holdsAny({ "DEMOD1" }) : holdsAny({ "0101 K412", "0101 K414V", "0101 K9V", "0107 K9V" }), "D1");
    add(older ? holdsAny({ "DEMOD2" }) : holdsAny({ "0102 K412", "0102 K414V", "0102 K9V", "0108 K9V" }), "D2");
    add(older ? holdsAny({ "DEMOD3" }) : holdsAny({ "0109 K412", "0109 K414V", "0109 K424V" }), "D3");
    add(list.contains("0110"), "T1");
    add(list.contains("0170"), "SP");
    add(list.contains("0136"), "S1");
    return channels.join(' ');
}

/// The card families by the model field of the entries; a kind that names K412W hides that model.
QByteArray familiesOf(const QByteArray &list)
{
    QByteArrayList models;
    for (const QByteArray &entry : list.split(',')) {
        const QByteArrayList fields = entry.split(' ');
        const bool renamed = fields.size() >= 6 && fields.at(1).contains("K412W");
        models.append(renamed ? QByteArray("QLN412W") : fields.size() == 3 ? fields.at(1) : fields.value(3));
    }
    QByteArrayList found;
    for (const char *model : { "QLN424", "K412W", "QLDX203", "QLDX204", "QLDX206", "QLDX208", "K3050", "K3060" }) {
        if (std::any_of(models.begin(), models.end(), [model](const QByteArray &m) { return m.contains(model); }))
            found.append(model);
    }
    return found.join(' ');
}

double cpuSeconds(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return -1;
    const QByteArrayList fields = stat.readAll().split(' ');
    return (fields.at(13).toDouble() + fields.at(14).toDouble()) / 100;
}

bool near(double value, double wanted, double tolerance) { return qAbs(value - wanted) <= tolerance; }

} // namespace

class tst_simulator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bootsThenAnswers();
    void requests_data();
    void requests();
    void everySettingIsAnswered();
    void families_data();
    void families();
    void presets();
    void radio();
    void statusReports();
    void sameSeedSameReports();
    void refusesIgnoresAndDelays();
    void damagesAndFloods();
    void chassisSpeaksByItself();
    void powerCycle();
    void clientComesAndGoes();
    void cables();
    void commandLine_data();
    void commandLine();
    void endsCleanly();
};

void tst_simulator::bootsThenAnswers()
{
    QElapsedTimer clock;
    clock.start();
    SimHarness sim({ QStringLiteral("--boot-seconds"), QStringLiteral("1") });
    QVERIFY(sim.isReady() && sim.open());
    sim.write("U0:TRON:OFF");
    QByteArray noise;
    while (clock.elapsed() < 800)
        noise += sim.readBytes(50);
    QVERIFY2(noise.contains("loading"), "boot chatter");
    QVERIFY(!noise.contains('\x06') && !noise.contains("U0:VER"));
    // As the head does: asks until answered.
    QByteArray answer;
    for (int tries = 0; tries < 50 && !answer.startsWith("U0:VER:"); ++tries) {
        sim.write("U0:VER");
        answer = sim.nextFrame(200);
    }
    QVERIFY(clock.elapsed() >= 1000);
    QVERIFY(answer.size() > int(sizeof("U0:VER:")));
    QCOMPARE(sim.ask("U0:SYSID:ZX-17"), kAck);
    QVERIFY(sim.ask("U0:CLST").startsWith("U0:CLST:0103 "));
    QCOMPARE(sim.ask("U0:TRON:ON"), kAck);
}

void tst_simulator::requests_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("answer"); // "U0:VERTSKB:..." stands for silence
    QTest::addColumn<QByteArray>("check");
    const QByteArray silence("U0:VERTSKB:KB-1.7.0");
    const auto row = [](const char *request, const QByteArray &answer, const char *check = "") {
        QTest::newRow(request) << QByteArray(request) << answer << QByteArray(check);
    };
    row("U0:TLST", "U0:TLST:");
    row("U0:PLIST", "U0:PLIST:");
    row("U0:NOSUCH", silence);
    row("U0:NOSUCH:1", kNak);
    row("X9:FREQ", silence);
    row("X9:FREQ:2250.5", kNak);
    row("D1:DMOD", silence);
    row("no colon", silence);
    row("U0:STORE", silence);
    row("U0:SLAVE:2", kAck, "U0:SLAVE:2");
    row("U0:SLAVE:1", kAck, "R2:SLAVE:1");
    row("U0:SLAVE:3", kNak, "U0:SLAVE:0");
    row("U0:TMRF:2", kNak, "U0:TMRF:1");
    row("U0:TRON:YES", kNak, "U0:TRON:OFF");
    row("U0:TIME:12:61:00", kNak);
    row("U0:CLST:0103", kNak);
    row("U0:RESTORE:none", kNak);
    row("U0:DELPR:none", kNak);
    row("U0:STORE:two words", kNak, "U0:PLIST:");
    row("U0:NAME:Van: north 2", kAck, "U0:NAME:Van: north 2");
    row("R1:FREQ:2395.5", kAck, "R1:FREQ:2395.5");
    row("R1:FREQ:2395.6", kNak, "R1:FREQ:2250.5");
    row("R1:FREQ:1850.3", kAck, "R1:FREQ:1850.3");
    row("R1:FREQ:1850.4", kNak, "R1:FREQ:2250.5");
    row("R1:FREQ:1435.5", kAck, "R1:FREQ:1435.5");
    row("R1:FREQ:1435.4", kNak, "R1:FREQ:2250.5");
    row("R1:FREQ:2e3", kNak);
    row("R1:FREQ:nan", kNak);
    row("R1:FREQ:", kNak, "R1:FREQ:2250.5");
    row("R1:IFBW:6", kAck, "R1:IFBW:6");
    row("R1:IFBW:7", kNak, "R1:IFBW:4");
    row("R1:IFBW:-1", kNak, "R1:IFBW:4");
    row("R2:AFCM:-200", kAck, "R2:AFCM:-200");
    row("R2:AFCM:-201", kNak, "R2:AFCM:0");
    row("R2:AFC:5", kNak, "R2:AFC:1");
    row("R2:AGCT:4", kAck, "R2:AGCT:4");
    row("R2:SLPA:3", kNak, "R2:SLPA:1");
    row("R2:AGCF:2", kNak, "R2:AGCF:0");
    row("R2:AGCF:on", kNak, "R2:AGCF:0");
    row("R2:ANCF:-12.5", kAck, "R2:ANCF:-12.5");
    row("R2:SSLV:-10", kNak);
    row("R2:FLST:3000 2000", kNak);
    for (const char *service : { "MVAL", "LSCI", "LSCL", "AFCC", "CVAL", "CRSI", "IFGC", "IFGCM" }) {
        const QByteArray set = QByteArray("R1:") + service + ":17 x";
        QTest::newRow(service) << set << kAck << set;
    }
}

void tst_simulator::requests()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, answer);
    QFETCH(QByteArray, check);
    SimHarness sim;
    QVERIFY(sim.isReady() && sim.open());
    QCOMPARE(sim.ask(request), answer);
    if (!check.isEmpty())
        QCOMPARE(sim.ask(check.left(check.indexOf(':', 3))), check);
}

void tst_simulator::everySettingIsAnswered()
{
    SimHarness sim;
    QVERIFY(sim.isReady() && sim.open());
    const QByteArrayList receiver = QByteArray("NAME ACFE ANCF CAMP CAMF AMIP FLST CIFS FREQ IFLS IFBW AGCF AGCZ SLPA "
                                               "SLPB POLA POLB IMPA IMPB AGCT AFC AFCM PLYB AIFB CINP CIF1 CATN MANG "
                                               "SYNL SSLV MAFL RLST AGCA AGCB")
                                        .split(' ');
    for (const char *address : { "R1:", "R2:" }) {
        for (const QByteArray &mnemonic : receiver)
            QVERIFY2(!sim.valueOf(address + mnemonic).isEmpty(), mnemonic.constData());
        for (const QByteArray &mnemonic : receiver)
            QVERIFY2(sim.valueOf(address + mnemonic) != "(no answer)", mnemonic.constData());
    }
    for (const char *mnemonic :
         { "NAME", "SLAVE", "TMRF", "TLST", "SYSOPT", "ABSSI", "TIME", "LOGC", "LAGC", "REMOTE" })
        QVERIFY2(sim.valueOf(QByteArray("U0:") + mnemonic) != "(no answer)", mnemonic);
    QCOMPARE(sim.valueOf("R1:FLST").split(',').first(), QByteArray("2395.5 2200.5"));
    // A set clock runs on.
    QCOMPARE(sim.ask("U0:TIME:23:59:59"), kAck);
    QTRY_VERIFY(sim.valueOf("U0:TIME").startsWith("00:00:0"));
}

void tst_simulator::families_data()
{
    QTest::addColumn<QByteArray>("channels");
    QTest::addColumn<QByteArray>("cardFamilies");
    QTest::newRow("demod-k3050") << QByteArray("R1 R2 C1 D1 D2 D3") << QByteArray("K3050 K3060");
    QTest::newRow("qln424") << QByteArray("R1 R2 C1 D1 D2 D3") << QByteArray("QLN424");
    QTest::newRow("k412w") << QByteArray("R1 R2 C1 D1 D2") << QByteArray("K412W");
    QTest::newRow("qldx") << QByteArray("R1 R2 C1 D1 D2") << QByteArray("QLDX203 QLDX204 QLDX206");
    QTest::newRow("one-receiver") << QByteArray("R1") << QByteArray();
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void tst_simulator::families()
{
    QFETCH(QByteArray, channels);
    QFETCH(QByteArray, cardFamilies);
    SimHarness sim({ QStringLiteral("--family"), QString::fromLatin1(QTest::currentDataTag()) });
    QVERIFY(sim.isReady() && sim.open());
    const QByteArray list = sim.valueOf("U0:CLST");
    QCOMPARE(channelsOf(list), channels);
    QCOMPARE(familiesOf(list), cardFamilies);
    for (const QByteArray &entry : list.split(',')) {
        const qsizetype fields = entry.split(' ').size();
        QVERIFY2(list.isEmpty() || fields == 6 || fields == 5 || fields == 3, entry.constData());
    }
    for (const char *receiver : { "R1", "R2" })
        QCOMPARE(sim.valueOf(receiver + QByteArray(":FREQ")) != "(no answer)", channels.contains(receiver));
}

void tst_simulator::presets()
{
    QTemporaryDir folder;
    const QStringList keep{ QStringLiteral("--presets"), folder.filePath(QStringLiteral("presets")) };
    {
        SimHarness sim(keep);
        QVERIFY(sim.isReady() && sim.open());
        for (const char *request : { "R1:FREQ:2260.5", "R2:NAME:East", "U0:TMRF:0", "U0:STORE:pass7", "U0:STORE:b",
                                     "R1:FREQ:2270.5", "R2:NAME:West", "U0:TMRF:1", "U0:SLAVE:1", "R2:AFC:1" })
            QCOMPARE(sim.ask(request), kAck);
        QCOMPARE(sim.ask("U0:PLIST"), QByteArray("U0:PLIST:b pass7 "));
        QElapsedTimer clock;
        clock.start();
        sim.write("U0:RESTORE:pass7");
        QList<QByteArray> frames = sim.framesUntil("U0:PDONE:1");
        QVERIFY(clock.elapsed() >= 1400);
        QCOMPARE(frames.takeFirst(), kAck);
        QCOMPARE(frames.takeFirst(), QByteArray("U0:PDONE:0"));
        QCOMPARE(frames.takeLast(), QByteArray("U0:PDONE:1"));
        std::sort(frames.begin(), frames.end());
        QCOMPARE(frames, (QList<QByteArray>{ "R1:FREQ:2260.5", "R2:NAME:East", "U0:SLAVE:0", "U0:TMRF:0" }));
        QCOMPARE(sim.ask("R1:FREQ"), QByteArray("R1:FREQ:2260.5"));
        QCOMPARE(sim.ask("U0:DELPR:b"), kAck);
    }
    SimHarness again(keep);
    QVERIFY(again.isReady() && again.open());
    QCOMPARE(again.ask("U0:PLIST"), QByteArray("U0:PLIST:pass7 "));
    QCOMPARE(again.ask("R2:NAME"), QByteArray("R2:NAME:Rcvr CH.2"));
    again.write("U0:RESTORE:pass7");
    QVERIFY(again.framesUntil("U0:PDONE:1").contains("R2:NAME:East"));
}

void tst_simulator::radio()
{
    SimHarness sim;
    QVERIFY(sim.isReady() && sim.open());
    const auto number = [&sim](const char *query) { return sim.valueOf(query).toDouble(); };
    QCOMPARE(sim.order("signal 2300.5 -50"), QByteArray("ok"));
    QCOMPARE(sim.order("signal 2310.1 -50"), QByteArray("ok"));
    QCOMPARE(sim.ask("R1:IFBW:2"), kAck);
    QCOMPARE(sim.ask("R1:FREQ:2300.5"), kAck);
    QCOMPARE(sim.ask("R1:SYNL"), QByteArray("R1:SYNL:0"));
    QTRY_COMPARE(sim.ask("R1:SYNL"), QByteArray("R1:SYNL:1"));
    QTRY_VERIFY(near(number("R1:SSLV"), -50, 0.2));
    QTRY_COMPARE(sim.ask("R1:MAFL"), QByteArray("R1:MAFL:1"));
    // 70 dB above the 0 V point at 20 and 10 dB/V, and as far below zero with the other polarity.
    QTRY_VERIFY(near(number("R1:AGCA"), 3500, 30) && near(number("R1:AGCB"), 7000, 60));
    QCOMPARE(sim.ask("R1:POLA:1"), kAck);
    QTRY_VERIFY(near(number("R1:AGCA"), -3500, 30));
    QCOMPARE(sim.ask("R1:SLPB:0"), kAck);
    QVERIFY(near(number("R1:AGCB"), 1400, 15));
    // The antenna's correction, then the level above a zero taken here.
    QVERIFY(sim.ask("R1:ANCF:-20") == kAck && sim.ask("R1:ACFE:1") == kAck);
    QVERIFY(near(number("R1:SSLV"), -70, 0.2));
    QCOMPARE(sim.ask("R1:AGCZ:1"), kAck);
    QVERIFY(near(number("R1:SSLV"), 0, 0.2));
    sim.order("signal 2300.5 -30");
    QTRY_VERIFY(near(number("R1:SSLV"), 20, 0.2));
    QTRY_VERIFY(near(number("R1:AGCB"), 400, 15));
    QCOMPARE(sim.ask("R1:AGCF:1"), kAck);
    sim.order("signal 2300.5 -60");
    QTRY_VERIFY(near(number("R1:SSLV"), -10, 0.2));
    QVERIFY2(near(number("R1:AGCB"), 400, 15), "frozen");
    // The AFC is pulled by the carrier's offset, by hand it shows what was set.
    QCOMPARE(sim.ask("R1:FREQ:2310.0"), kAck);
    QTRY_COMPARE(sim.ask("R1:RLST"), QByteArray("R1:RLST:100"));
    QVERIFY(sim.ask("R1:AFCM:-55") == kAck && sim.ask("R1:AFC:4") == kAck);
    QTRY_COMPARE(sim.ask("R1:RLST"), QByteArray("R1:RLST:-55"));
    // Nothing there: noise, more of it through a wider filter, and no lock.
    QVERIFY(sim.ask("R1:AGCZ:0") == kAck && sim.ask("R1:ACFE:0") == kAck && sim.ask("R1:AFC:1") == kAck);
    QCOMPARE(sim.ask("R1:FREQ:2390.5"), kAck);
    QTRY_COMPARE(sim.ask("R1:SYNL"), QByteArray("R1:SYNL:1"));
    QCOMPARE(sim.ask("R1:MAFL"), QByteArray("R1:MAFL:0"));
    const double narrow = number("R1:SSLV");
    QVERIFY(narrow < -100);
    QCOMPARE(sim.ask("R1:IFBW:5"), kAck);
    QTRY_VERIFY(near(number("R1:SSLV"), narrow + 10, 2.5));
}

void tst_simulator::statusReports()
{
    SimHarness sim({ QStringLiteral("--report-hz"), QStringLiteral("10") });
    QVERIFY(sim.isReady() && sim.open());
    QElapsedTimer clock;
    clock.start();
    sim.write("U0:TRON:ON");
    QHash<QByteArray, int> seen;
    while (seen.value("R2:AGCB") < 11)
        ++seen[sim.nextFrame().left(7)];
    QVERIFY(clock.elapsed() >= 950);
    for (const char *mnemonic : { "SYNL", "SSLV", "MAFL", "RLST", "AGCA", "AGCB" })
        QVERIFY2(seen.value(QByteArray("R1:") + mnemonic) >= 10, mnemonic);
    sim.write("U0:TRON:OFF");
    sim.framesUntil(kAck);
    QCOMPARE(sim.nextFrame(400), QByteArray("(nothing)"));
}

void tst_simulator::sameSeedSameReports()
{
    QTemporaryDir folder;
    QFile script(folder.filePath(QStringLiteral("script")));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write(
        "# reports begin when every client has long been there\n@3 set U0 TRON ON\nwait 0.5\nsignal 2250.5 -70\n");
    script.close();
    const QStringList common{ QStringLiteral("--script"), script.fileName(), QStringLiteral("--seed") };
    SimHarness first(common + QStringList(QStringLiteral("7")));
    SimHarness second(common + QStringList(QStringLiteral("7")));
    SimHarness other(common + QStringList(QStringLiteral("8")));
    QVERIFY(first.open() && second.open() && other.open());
    const auto reports = [](SimHarness &sim) {
        QList<QByteArray> frames;
        while (frames.size() < 100)
            frames.append(sim.nextFrame(6000));
        return frames;
    };
    const QList<QByteArray> expected = reports(first);
    QVERIFY(expected.first() == "U0:TRON:ON" && !expected.contains("(nothing)"));
    QCOMPARE(reports(second), expected);
    QVERIFY(reports(other) != expected);
}

void tst_simulator::refusesIgnoresAndDelays()
{
    SimHarness sim;
    QVERIFY(sim.isReady() && sim.open());
    const QByteArray silence("U0:VERTSKB:KB-1.7.0");
    QVERIFY(sim.order("refuse R1:FREQ 2").startsWith("ok"));
    QVERIFY(sim.ask("R1:FREQ:2260.5") == kNak && sim.ask("R1:FREQ") == kNak);
    QCOMPARE(sim.ask("R1:FREQ"), QByteArray("R1:FREQ:2250.5"));
    sim.order("refuse R2");
    QVERIFY(sim.ask("R2:FREQ") == kNak && sim.ask("R2:AFC:1") == kNak && sim.ask("R1:AFC:1") == kAck);
    sim.order("refuse off");
    QCOMPARE(sim.ask("R2:AFC:1"), kAck);
    sim.order("silent R1:FREQ 1");
    QCOMPARE(sim.ask("R1:FREQ:2270.5"), silence);
    QCOMPARE(sim.ask("R1:FREQ"), QByteArray("R1:FREQ:2250.5"));
    sim.order("silent");
    sim.write("U0:VER");
    sim.write("R1:FREQ:2270.5");
    QCOMPARE(sim.nextFrame(200), QByteArray("(nothing)"));
    sim.order("silent off");
    QCOMPARE(sim.ask("R1:FREQ"), QByteArray("R1:FREQ:2250.5"));
    sim.order("delay 300 U0:VER");
    QElapsedTimer clock;
    clock.start();
    sim.write("U0:VER");
    QVERIFY(sim.nextFrame().startsWith("U0:VER:"));
    QVERIFY(clock.elapsed() >= 260);
    sim.order("delay 0");
    QVERIFY(sim.ask("U0:VER").startsWith("U0:VER:"));
    for (const char *bad :
         { "refuse R1 none", "silent 0", "delay x", "flood 0 1", "raw 0x", "plug nothing", "signal a b",
           "set R1 FREQ 9", "set R1 SSLV 0", "set X1 FREQ 1", "nonsense", "power-cycle -1", "send" })
        QVERIFY2(sim.order(bad).startsWith("error: "), bad);
}

void tst_simulator::damagesAndFloods()
{
    SimHarness sim;
    QVERIFY(sim.isReady() && sim.open());
    const QByteArray whole("\x02U0:NAME:Range Station 7\x0d");
    QCOMPARE(sim.order("garble 20"), QByteArray("ok"));
    int cut = 0;
    for (int message = 0; message < 20; ++message) {
        sim.write("U0:NAME");
        QByteArray bytes = sim.readBytes();
        while (bytes.size() < whole.size() - 1)
            bytes += sim.readBytes();
        bytes += sim.readBytes(30);
        QVERIFY(bytes != whole);
        cut += bytes == whole.chopped(1) ? 1 : 0;
    }
    QVERIFY2(cut > 0 && cut < 20, "both kinds of damage");
    QCOMPARE(sim.ask("U0:NAME"), QByteArray("U0:NAME:Range Station 7"));
    // More than the line carries: it comes at line speed, the rest is lost, and requests still get through afterwards.
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(sim.order("flood 20000 1"), QByteArray("ok"));
    qsizetype received = 0;
    while (received < 90'000) {
        const QByteArray bytes = sim.readBytes();
        QVERIFY(!bytes.isEmpty());
        received += bytes.size();
    }
    QVERIFY2(double(clock.nsecsElapsed()) / 1e9 >= double(received) / 92160, "faster than the line");
    while (!sim.readBytes(300).isEmpty()) {
    }
    QVERIFY(!sim.order("show").endsWith("overruns=0"));
    QCOMPARE(sim.ask("U0:TMRF"), QByteArray("U0:TMRF:1"));
}

void tst_simulator::chassisSpeaksByItself()
{
    QTemporaryDir folder;
    QFile trace(folder.filePath(QStringLiteral("trace")));
    SimHarness sim({ QStringLiteral("--trace"), trace.fileName() });
    QVERIFY(sim.isReady() && sim.open());
    QCOMPARE(sim.order("send U0:UPDT:0"), QByteArray("ok"));
    QCOMPARE(sim.nextFrame(), QByteArray("U0:UPDT:0"));
    QCOMPARE(sim.order("raw 41 02 5231 0d"), QByteArray("ok"));
    QCOMPARE(sim.readBytes(), QByteArray("A\x02R1\x0d"));
    QCOMPARE(sim.order("set R2 NAME  Far  East"), QByteArray("ok"));
    QCOMPARE(sim.nextFrame(), QByteArray("R2:NAME:Far  East"));
    QCOMPARE(sim.order("reconfigure"), QByteArray("ok"));
    QVERIFY(sim.order("reconfigure").startsWith("error: "));
    const QList<QByteArray> frames = sim.framesUntil("U0:UPDT:1");
    QCOMPARE(frames.first(), QByteArray("U0:UPDT:0"));
    QVERIFY(frames.contains("R1:IFBW:4") && frames.contains("R2:NAME:Far  East") && frames.last() == "U0:UPDT:1");
    QCOMPARE(sim.ask("U0:TMRF:1"), kAck);
    QVERIFY(trace.open(QIODevice::ReadOnly));
    const QRegularExpression line(QStringLiteral("^\\d+\\.\\d{3} [<>] command \\S.*$"));
    const QStringList lines = QString::fromLatin1(trace.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &text : lines)
        QVERIFY2(line.match(text).hasMatch(), qPrintable(text));
    const auto traced = [&lines](const char *text) { return !lines.filter(QString::fromLatin1(text)).isEmpty(); };
    QVERIFY(traced("< command U0:TMRF:1") && traced("> command <ACK>") && traced("> command A<STX>R1<CR>"));
}

void tst_simulator::powerCycle()
{
    SimHarness sim;
    QVERIFY(sim.isReady() && sim.open());
    for (const char *request : { "R1:FREQ:2260.5", "U0:SLAVE:1", "U0:STORE:p", "U0:TRON:ON" })
        QCOMPARE(sim.ask(request), kAck);
    QCOMPARE(sim.order("power-cycle 0.6"), QByteArray("ok"));
    sim.write("R1:FREQ:2280.5");
    QTRY_VERIFY(sim.order("show").startsWith("ok awake"));
    QByteArray chatter;
    for (QByteArray bytes = sim.readBytes(); !bytes.isEmpty(); bytes = sim.readBytes(300))
        chatter += bytes;
    QVERIFY2(chatter.contains("loading") && !chatter.contains('\x06'), "boots and does not answer");
    QCOMPARE(sim.valueOf("U0:TRON"), QByteArray("OFF"));
    QCOMPARE(sim.valueOf("U0:SLAVE"), QByteArray("0"));
    QCOMPARE(sim.valueOf("R1:FREQ"), QByteArray("2260.5"));
    QCOMPARE(sim.valueOf("U0:PLIST"), QByteArray("p "));
}

void tst_simulator::clientComesAndGoes()
{
    SimHarness sim;
    QVERIFY(sim.isReady() && sim.open());
    QCOMPARE(sim.ask("U0:TRON:ON"), kAck);
    sim.order("flood 2000 1");
    QVERIFY(!sim.readBytes().isEmpty());
    sim.write("U0:NAME:half a req"); // and gone, with reports unread
    sim.close();
    QTRY_VERIFY(sim.order("show").contains("command=plugged"));
    const double before = cpuSeconds(sim.process().processId());
    QTest::qWait(1000);
    const double used = cpuSeconds(sim.process().processId()) - before;
    QVERIFY2(before >= 0 && used < 0.5, "an unopened line must not keep the processor busy");
    QVERIFY(sim.order("set U0 TRON OFF").startsWith("ok"));
    for (int round = 0; round < 3; ++round) {
        QVERIFY(sim.open(round % 2 == 0 ? QStringLiteral("ttyUSB3") : QStringLiteral("ttyUSB0")));
        QCOMPARE(sim.ask("R1:NAME"), QByteArray("R1:NAME:Rcvr CH.1"));
        sim.close();
        QTRY_VERIFY(sim.order("show").contains("command=plugged"));
    }
}

void tst_simulator::cables()
{
    SimHarness sim;
    QVERIFY(sim.isReady());
    for (int device = 0; device < 10; ++device) {
        const QString name = QStringLiteral("ttyUSB%1").arg(device);
        QVERIFY2(QFileInfo(sim.path(name)).exists(), qPrintable(name));
    }
    for (const auto &[name, older] :
         { std::pair("0", "3"), std::pair("1", "7"), std::pair("4", "8"), std::pair("5", "9") })
        QCOMPARE(QFile::symLinkTarget(sim.path(QStringLiteral("ttyUSB") + QString::fromLatin1(name))),
                 QFile::symLinkTarget(sim.path(QStringLiteral("ttyUSB") + QString::fromLatin1(older))));
    QVERIFY(sim.open(QStringLiteral("ttyUSB4")));
    sim.write("U0:VER");
    QVERIFY2(sim.readBytes(200).isEmpty(), "the other links say nothing, and do not echo");
    QVERIFY(sim.open());
    QCOMPARE(sim.order("unplug command"), QByteArray("ok"));
    QVERIFY(sim.hungUp());
    QVERIFY(!QFileInfo(sim.path(QStringLiteral("ttyUSB0"))).isSymLink());
    QVERIFY(!QFileInfo(sim.path(QStringLiteral("ttyUSB3"))).isSymLink());
    QVERIFY(QFileInfo(sim.path(QStringLiteral("ttyUSB1"))).exists());
    QVERIFY(sim.order("plug command") == "ok" && sim.order("plug command") == "ok");
    QVERIFY(sim.open());
    QCOMPARE(sim.ask("U0:TMRF"), QByteArray("U0:TMRF:1"));
    sim.order("unplug all");
    QCOMPARE(QDir(sim.path(QString())).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size(), 0);
}

void tst_simulator::commandLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *tag, const char *arguments, int exitCode, const char *text) {
        QTest::newRow(tag) << QString::fromLatin1(arguments).split(u' ', Qt::SkipEmptyParts) << exitCode
                           << QString::fromLatin1(text);
    };
    row("no folder", "", 2, "--device-dir");
    row("unknown option", "--device-dir DIR --nonsense", 2, "nonsense");
    row("unknown family", "--device-dir DIR --family nonsense", 2, "nonsense");
    row("no number", "--device-dir DIR --boot-seconds soon", 2, "--boot-seconds");
    row("too often", "--device-dir DIR --report-hz 51", 2, "--report-hz");
    row("no script", "--device-dir DIR --script DIR/none", 2, "DIR/none");
    row("foreign file in the way", "--device-dir DIR/taken", 2, "ttyUSB1");
    row("help", "--help", 0, "power-cycle");
    row("families", "--list-families", 0, "one-receiver");
}

void tst_simulator::commandLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, text);
    QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("taken/ttyUSB1")));
    arguments.replaceInStrings(QStringLiteral("DIR"), folder.path());
    QProcess process;
    process.start(SimHarness::program(), arguments);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), exitCode);
    const QByteArray output = exitCode == 0 ? process.readAllStandardOutput() : process.readAllStandardError();
    QVERIFY2(output.contains(text.replace(QStringLiteral("DIR"), folder.path()).toUtf8()), output.constData());
    QVERIFY(!QFileInfo(folder.filePath(QStringLiteral("taken/ttyUSB0"))).isSymLink());
}

void tst_simulator::endsCleanly()
{
    for (const QByteArray &way : { QByteArray("SIGTERM"), QByteArray("SIGINT"), QByteArray("quit") }) {
        SimHarness sim;
        QVERIFY(sim.isReady());
        sim.process().write("help set"); // no line end: what follows the end of input must not matter
        sim.process().closeWriteChannel();
        SimHarness listening;
        QVERIFY(listening.isReady() && listening.open());
        SimHarness &ending = way == "quit" ? listening : sim;
        if (way == "quit")
            QCOMPARE(listening.order("quit"), QByteArray("ok"));
        else
            QVERIFY(::kill(pid_t(sim.process().processId()), way == "SIGTERM" ? SIGTERM : SIGINT) == 0);
        QVERIFY(ending.process().state() == QProcess::NotRunning || ending.process().waitForFinished());
        QCOMPARE(ending.process().exitStatus(), QProcess::NormalExit);
        QCOMPARE(ending.process().exitCode(), 0);
        QVERIFY(!QFileInfo(ending.path(QStringLiteral("ttyUSB0"))).isSymLink());
    }
}

QTEST_GUILESS_MAIN(tst_simulator)
#include "tst_simulator.moc"
