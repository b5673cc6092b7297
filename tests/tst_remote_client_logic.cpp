#include "remote/commands/ApplyPlan.h"
#include "remote/commands/CommandLine.h"
#include "remote/commands/Pace.h"
#include "remote/files/Recording.h"
#include "remote/files/SettingsFile.h"
#include "remote/wire/FrameCutter.h"
#include "support/Wait.h"

#include <QTemporaryFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace remote;

namespace {

/// Values by key, from "R1:FREQ=1 R1:NAME=x".
SettingsReader::Values values(const QByteArray &text)
{
    SettingsReader::Values values;
    for (const QByteArray &word : text.split(' ')) {
        if (const qsizetype equals = word.indexOf('='); equals > 0)
            values[word.left(equals)] = word.mid(equals + 1);
    }
    return values;
}

} // namespace

/// The remote client's library, without program and links.
class RemoteClientLogicTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commandLine_data();
    void commandLine();
    void frames();
    void sameValues();
    void applyPlan_data();
    void applyPlan();
    void settingsText();
    void cutOffRecording();
    void pace();
};

void RemoteClientLogicTest::commandLine_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("arguments");
    const auto row = [](const char *line, const QStringList &arguments) {
        QTest::newRow(line) << QString::fromLatin1(line).split(u' ') << arguments;
    };
    row("set R1:X -3", { u"R1:X"_s, u"-3"_s });
    row("set R1:X -.5", { u"R1:X"_s, u"-.5"_s });
    row("set R1:X ++", { u"R1:X"_s, u"++"_s });
    row("set R1:X [1,2]", { u"R1:X"_s, u"[1,2]"_s });
    row("set R1:X get", { u"R1:X"_s, u"get"_s });
    row("set R1:X --timeout 5 --timeout=7 -", { u"R1:X"_s, u"-"_s });
    row("--no-confirm set -- R1:X --raw", { u"R1:X"_s, u"--raw"_s });
    row("watch --count 3 [RC]1:[FN] -*", { u"[RC]1:[FN]"_s, u"-*"_s });
}

void RemoteClientLogicTest::commandLine()
{
    QFETCH(QStringList, words);
    CommandLine commandLine;
    QCOMPARE(commandLine.read(QStringList{ u"zirvo-remote"_s, u"--link"_s, u"/dev/x"_s } + words), -1);
    QTEST(commandLine.options().arguments, "arguments");
    QCOMPARE(commandLine.options().link, u"/dev/x"_s);
    QCOMPARE(commandLine.options().timeoutMs, words.contains(u"--timeout=7"_s) ? 7 : 1500);
    QCOMPARE(commandLine.options().confirmMs, words.contains(u"--no-confirm"_s) ? 0 : 2500);
    QCOMPARE(commandLine.options().count, words.contains(u"--count"_s) ? 3 : 0);
}

void RemoteClientLogicTest::frames()
{
    const QByteArray longest(65'536, 'x');
    FrameCutter cutter;
    QCOMPARE(cutter.feed("a\r\x02"
                         "b\rc\r\x02\r"),
             QByteArrayList({ "b", "" }));
    QCOMPARE(cutter.feed("\x02"
                         "a\x02"
                         "b"),
             QByteArrayList());
    QCOMPARE(cutter.feed("c\r"), QByteArrayList{ "bc" });
    QCOMPARE(cutter.feed('\x02' + longest + '\r'), QByteArrayList{ longest });
    QCOMPARE(cutter.feed('\x02' + longest +
                         "x\r\x02"
                         "b\r"),
             QByteArrayList{ "b" });
}

void RemoteClientLogicTest::sameValues()
{
    QVERIFY(Message::sameValue("50.0", "5e1"));
    QVERIFY(Message::sameValue("0.3", "0.30000000000000004"));
    QVERIFY(!Message::sameValue("2250.5", "2250.500001"));
    QVERIFY(!Message::sameValue("inf", "infinity"));
    QVERIFY(!Message::sameValue("", "0"));
}

void RemoteClientLogicTest::applyPlan_data()
{
    QTest::addColumn<QByteArray>("saved");
    QTest::addColumn<QByteArray>("present");
    QTest::addColumn<QByteArray>("steps");
    QTest::addColumn<QByteArray>("skipped");
    QTest::addColumn<QByteArray>("unsendable");
    const auto row = [](const char *name, const char *saved, const char *present, const char *steps,
                        const char *skipped = "", const char *unsendable = "") {
        QTest::newRow(name) << QByteArray(saved) << QByteArray(present) << QByteArray(steps) << QByteArray(skipped)
                            << QByteArray(unsendable);
    };
    row("what others depend on comes first", "R1:IFBW=3 R1:FREQ=2 D1:RATEA=9 D1:DMOD=1",
        "R1:IFBW=1 R1:FREQ=1 D1:RATEA=8 D1:DMOD=0", "R1:FREQ=2 R1:IFBW=3 D1:DMOD=1 D1:RATEA=9");
    row("only what differs", "R1:IFBW=3 R1:FREQ=2.50", "R1:IFBW=1 R1:FREQ=2.5", "R1:IFBW=3");
    row("network settings are committed before what follows", "TM1-0:ADDR=a TM1-0:TSRC=1 TM1-1:PORT=7",
        "TM1-0:ADDR=b TM1-0:TSRC=0 TM1-1:PORT=8", "TM1-0:ADDR=a TM1-0:TSRC=1 TM1-0:COMT=1 TM1-1:PORT=7");
    row("no commit for the time source", "TM1-0:ADDR=a TM1-0:TSRC=1", "TM1-0:ADDR=a TM1-0:TSRC=0", "TM1-0:TSRC=1");
    row("unknown channels and read-only values", "R7:FREQ=1 R7:NAME=1 U0:TIME=1 R1:FLST=1", "U0:TIME=2", "",
        "R1:FLST R7 U0:TIME");
    row("values that cannot be sent", "R1:NAME=who? R1:FREQ=1 U0:SLAVE=1?", "R1:NAME=x U0:SLAVE=0", "", "",
        "R1:NAME R1:FREQ U0:SLAVE");
}

void RemoteClientLogicTest::applyPlan()
{
    QFETCH(QByteArray, saved);
    QFETCH(QByteArray, present);
    const ApplyPlan plan(values(saved), { "U0", "R1", "D1", "TM1-0", "TM1-1" });
    QByteArrayList steps;
    for (const ApplyPlan::Step &step : plan.steps(values(present)))
        steps.append(step.key + '=' + step.value);
    QTEST(steps.join(' '), "steps");
    QTEST(plan.skipped().join(' '), "skipped");
    QTEST(plan.unsendable(values(present)).join(' '), "unsendable");
}

void RemoteClientLogicTest::settingsText()
{
    const auto present = values("U0:SYSID=RACK U0:CARDS=A,[b, R1:AFC=Unknown R1:AFCM=Uknown R1:CAMF= "
                                "R1:NAME=\"\xff\x01 R1:FREQ=2.5 R1:IFLS=1,2");
    const QByteArray text = SettingsFile::text({ "R1" }, present, QDateTime::fromMSecsSinceEpoch(0, Qt::UTC));
    QCOMPARE(text, R"({
    "format": "zirvo-settings",
    "version": 1,
    "taken": "1970-01-01T00:00:00.000Z",
    "system": {
        "SYSID": "RACK",
        "cards": ["A", "[b", ""]
    },
    "channels": {
        "R1": {
            "settings": {
                "NAME": "\")"
                   "\xef\xbf\xbd"
                   R"(\u0001",
                "FREQ": "2.5"
            },
            "info": {
                "IFLS": "1,2"
            }
        }
    }
})"_ba);
}

void RemoteClientLogicTest::cutOffRecording()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("zirvo-recording 1 2026-01-01T00:00:00.000Z\n1.500000 remote > R1:FREQ?\n1.500001 remote > R1:FR?");
    file.flush();
    Recording recording;
    QCOMPARE(recording.open(file.fileName()), QString());
    QVERIFY(recording.isCutOff());
    const auto frame = recording.next();
    QVERIFY(frame);
    QCOMPARE(frame->frame, "R1:FREQ?"_ba);
    QCOMPARE(Recording::dueMs(*frame, 3), 500);
    QCOMPARE(Recording::dueMs(*frame, 0), 0);
    QVERIFY(!recording.next());
    QVERIFY(recording.atEnd());
}

/// A timer that fires early, or that cannot reach as far, is started again.
void RemoteClientLogicTest::pace()
{
    qint64 now = 100;
    int asked = 0;
    Pace pace([&now, &asked] {
        ++asked;
        return now;
    });
    pace.start();
    bool called = false;
    pace.await(2, this, [&called] { called = true; });
    QVERIFY(waitUntil([&asked] { return asked >= 4; })); // the start, the wait, a timer that fired, the wait again
    QVERIFY(!called);
    now = 102;
    QVERIFY(waitUntil([&called] { return called; }));
}

QTEST_GUILESS_MAIN(RemoteClientLogicTest)
#include "tst_remote_client_logic.moc"
