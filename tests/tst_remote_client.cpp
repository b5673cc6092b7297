#include "support/RemoteBench.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

#include <sys/ioctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Lines without the time at their start.
QByteArray untimed(const QByteArray &lines)
{
    return QString::fromLatin1(lines)
        .remove(QRegularExpression(u"^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} "_s, QRegularExpression::MultilineOption))
        .toLatin1();
}

} // namespace

/// The shipped program, started as a user starts it.
class RemoteClientTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void conversations_data();
    void conversations();
    void answersForAnEarlierClient();
    void wrongUsage_data();
    void wrongUsage();
    void dumpAndApply();
    void apply_data();
    void apply();
    void interruptedApply();
    void wrongFiles_data();
    void wrongFiles();
    void watch_data();
    void watch();
    void endsOfWatch_data();
    void endsOfWatch();
    void blockedReader();
    void lostOutput_data();
    void lostOutput();
    void fifos();
    void recordsOverNothing_data();
    void recordsOverNothing();
    void recordAndReplay();
    void replayPace();
    void resend_data();
    void resend();
    void resendsWhatCanBeSent();
};

void RemoteClientTest::conversations_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QByteArray>("problem");
    QTest::addColumn<QByteArray>("sent");
    const auto row = [](const char *name, const char *line, const char *script, int exitCode, const char *output,
                        const char *problem, const char *sent) {
        QTest::newRow(name) << words(line) << QByteArray(script) << exitCode << QByteArray(output)
                            << QByteArray(problem) << QByteArray(sent);
    };
    const char kReceiver[] = "R1:FREQ=2250.5;R1:NAME=a:b c";
    row("get", "get R1:FREQ R1:NAME", kReceiver, 0, "R1:FREQ 2250.5\nR1:NAME a:b c\n", "", "R1:FREQ? R1:NAME?");
    row("get raw", "get --raw R1:NAME", kReceiver, 0, "a:b c\n", "", "R1:NAME?");
    row("get refused", "get R1:XX R1:FREQ", kReceiver, 1, "R1:FREQ 2250.5\n", "R1:XX: refused", "R1:XX? R1:FREQ?");
    row("get silent", "get --timeout 200 R1:FREQ", "silent R1:FREQ", 2, "", "R1:FREQ: no answer", "R1:FREQ?");
    row("get answered twice", "get R1:FREQ R1:NAME R1:FREQ", "R1:FREQ=1;R1:NAME=n;twice R1:FREQ", 0,
        "R1:FREQ 1\nR1:NAME n\nR1:FREQ 1\n", "", "R1:FREQ? R1:NAME? R1:FREQ?");
    row("get answered out of order", "get R1:FREQ R1:NAME", "R1:FREQ=1;R1:NAME=n;late R1:FREQ", 0,
        "R1:FREQ 1\nR1:NAME n\n", "", "R1:FREQ? R1:NAME?");
    row("get hang-up", "get R1:FREQ", "hangup R1:FREQ", 2, "", "remote link lost", "R1:FREQ?");
    row("set", "set R1:FREQ 2251.5", kReceiver, 0, "R1:FREQ 2251.5 confirmed\n", "", "R1:FREQ:2251.5");
    row("set below zero", "set D1:DFIR -1", "D1:DFIR=0", 0, "D1:DFIR -1 confirmed\n", "", "D1:DFIR:-1");
    row("set the same number", "set R1:AFCM 5e1", "R1:AFCM=50.0;keep R1:AFCM", 0, "R1:AFCM 5e1 confirmed\n", "",
        "R1:AFCM:5e1");
    row("set that moves another", "set R1:FREQ 3", "R1:FREQ=1;move R1:FREQ R2:FREQ=9", 0, "R1:FREQ 3 confirmed\n", "",
        "R1:FREQ:3");
    row("set refused by the card", "set R1:FREQ 2251.5", "R1:FREQ=2250.5;keep R1:FREQ", 1, "",
        "R1:FREQ: not taken by the card, still 2250.5", "R1:FREQ:2251.5");
    row("set refused by the head", "set R1:FREQ 9", "R1:FREQ=2250.5;nak R1:FREQ", 1, "", "R1:FREQ: refused",
        "R1:FREQ:9");
    row("set not pushed", "set U0:NAME Rack", "U0:NAME=x;quiet U0:NAME", 0, "U0:NAME Rack confirmed\n", "",
        "U0:NAME:Rack U0:NAME?");
    row("set not taken, not pushed", "set --confirm 100 U0:NAME Rack", "U0:NAME=x;drop U0:NAME", 1, "",
        "U0:NAME: not taken by the card, still x", "U0:NAME:Rack U0:NAME?");
    row("set of what nobody knows", "set --confirm 100 R1:CINP 1", "R1:CINP=Unknown;drop R1:CINP", 0,
        "R1:CINP 1 acknowledged, not confirmed\n", "", "R1:CINP:1 R1:CINP?");
    row("set without confirming", "set --no-confirm R1:FREQ 1", "R1:FREQ=2;keep R1:FREQ", 0, "R1:FREQ 1 acknowledged\n",
        "", "R1:FREQ:1");
    row("set of an order that reads as something else", "set D1:DREG 1", "D1:DREG=0;drop D1:DREG", 0,
        "D1:DREG 1 acknowledged, not confirmed\n", "", "D1:DREG:1");
    row("set of a list that keeps the set", "set R1:LSCI 1", "R1:LSCI=0", 0, "R1:LSCI 1 acknowledged, not confirmed\n",
        "", "R1:LSCI:1");
    row("set of an order refused", "set D1:QQQX 1", "", 1, "", "D1:QQQX: refused", "D1:QQQX:1");
    row("set silent", "set --timeout 200 R1:FREQ 1", "silent R1:FREQ", 2, "", "R1:FREQ: no answer", "R1:FREQ:1");
    row("at most sixteen unanswered",
        "get --timeout 300 A:0 A:1 A:2 A:3 A:4 A:5 A:6 A:7 A:8 A:9 A:a A:b A:c A:d A:e A:f A:g A:h",
        "A:0=1;silent A:1;silent A:2;silent A:3;silent A:4;silent A:5;silent A:6;silent A:7;silent A:8;silent A:9;"
        "silent A:a;silent A:b;silent A:c;silent A:d;silent A:e;silent A:f;silent A:g;silent A:h",
        2, "A:0 1\n", "A:1: no answer",
        "A:0? A:1? A:2? A:3? A:4? A:5? A:6? A:7? A:8? A:9? A:a? A:b? A:c? A:d? A:e? A:f? A:g?");
    row("no status link", "--link @client-remote --device-dir @nowhere watch --for 0.1", "", 0, "", "no status link",
        "");
    row("status link does not open", "--status-link /nowhere/at/all watch", "", 2, "", "/nowhere/at/all does not open",
        "");
    row("link does not open", "--link /nowhere/at/all get R1:FREQ", "", 2, "", "/nowhere/at/all does not open", "");
}

void RemoteClientTest::conversations()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, script);
    RemoteBench bench(script);
    const int exitCode = bench.run(arguments);
    QTEST(bench.process().readAllStandardOutput(), "output");
    const QByteArray said = bench.process().readAllStandardError();
    QFETCH(QByteArray, problem);
    QVERIFY2(problem.isEmpty() ? said.isEmpty() : said.contains(problem), said);
    QTEST(bench.sent(), "sent");
    QTEST(exitCode, "exitCode");
}

void RemoteClientTest::answersForAnEarlierClient()
{
    RemoteBench bench("R1:FREQ=1");
    bench.remote().sendFrame("R1:FREQ:99\x06");
    QCOMPARE(bench.run(words("get R1:FREQ")), 0);
    QCOMPARE(bench.process().readAllStandardOutput(), "R1:FREQ 1\n"_ba);
}

void RemoteClientTest::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("problem");
    const auto row = [](const char *name, const QStringList &arguments, const char *problem) {
        QTest::newRow(name) << arguments << QByteArray(problem);
    };
    row("no command", {}, "no command (see: zirvo-remote --help)");
    row("unknown command", { u"got"_s }, "no command \"got\"");
    row("unknown option", words("get --rw R1:FREQ"), "--rw");
    row("option of another command", words("get --count 1 R1:FREQ"), "get does not take --count");
    row("number", words("watch --count 1.5"), "--count takes a whole number");
    row("number out of range", words("get --timeout 0 R1:FREQ"), "from 1 to 1000000000 (");
    row("pattern", words("watch R1:* ["), "\"[\" is no pattern");
    row("recording of what sends nothing", words("replay --record @file @file"), "--record only with --send");
    row("too few", words("set R1:FREQ"), "set takes ADDR:MNEM VALUE (see: zirvo-remote help set)");
    row("no name for a file", { u"record"_s, QString() }, "the name of a file is empty");
    row("no colon", words("get R1FREQ"), "ADDRESS:MNEMONIC");
    row("two colons", words("get R1:FREQ:1"), "ADDRESS:MNEMONIC");
    row("blank", { u"get"_s, u"R1: FREQ"_s }, "no blanks");
    row("query mark in the mnemonic", { u"set"_s, u"R1:FREQ?"_s, u"1"_s }, "no blanks");
    row("empty value", { u"set"_s, u"R1:NAME"_s, QString() }, "empty value");
    row("frame in the value", { u"set"_s, u"R1:NAME"_s, u"x\r\x02U0:SLAVE:1"_s }, "control characters");
    row("a long name", { u"get"_s, u"R1:"_s + QString(4093, u'x') }, "with 4097 bytes it is longer");
    row("a long value", { u"set"_s, u"R1:NAME"_s, QString(4089, u'x') }, "with 4097 bytes it is longer");
    row("query in the value", { u"set"_s, u"R1:NAME"_s, u"who?"_s }, "question mark");
}

void RemoteClientTest::wrongUsage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, problem);
    RemoteBench bench("R1:FREQ=1;R1:NAME=x");
    QCOMPARE(bench.run(arguments), 64);
    const QByteArray said = bench.process().readAllStandardError();
    QVERIFY2(said.contains(problem), said);
    QCOMPARE(bench.remote().bytes(), ""_ba);
}

void RemoteClientTest::dumpAndApply()
{
    RemoteBench bench(
        "U0:CHANS=U0,R1,X9,TM1-0;U0:CARDS=A 1,B 2;U0:SYSID=RACK-7;U0:SLAVE=0;U0:TIME=12:00;"
        "R1:FREQ=2250.5;R1:IFLS=1 MHz,2 MHz;R1:IFBW=1;R1:AFC=Unknown;R1:AFCM=Uknown;R1:CAMF=;R1:NAME=\xc3\xa9 \"x\";"
        "TM1-0:ADDR=10.0.0.7");
    QCOMPARE(bench.run(words("dump @rack.json")), 0);
    const QByteArray text = bench.read("rack.json");
    const QJsonObject root = QJsonDocument::fromJson(text).object();
    QCOMPARE(root[u"format"].toString(), u"zirvo-settings"_s);
    QCOMPARE(root[u"system"][u"SYSID"].toString(), u"RACK-7"_s);
    QCOMPARE(root[u"system"][u"cards"].toArray(), QJsonArray({ u"A 1"_s, u"B 2"_s }));
    const QJsonObject receiver = root[u"channels"][u"R1"].toObject();
    QCOMPARE(receiver[u"settings"].toObject().keys().join(u' '), u"FREQ IFBW NAME"_s);
    QVERIFY(text.indexOf("\"NAME\"") < text.indexOf("\"FREQ\"") && text.indexOf("\"FREQ\"") < text.indexOf("\"IFBW\""));
    QCOMPARE(receiver[u"info"][u"IFLS"].toString(), u"1 MHz,2 MHz"_s);
    QCOMPARE(root[u"channels"][u"U0"][u"info"][u"TIME"].toString(), u"12:00"_s);
    QVERIFY(!root[u"channels"][u"U0"][u"settings"].toObject().contains(u"TIME"_s));

    bench.play("R1:FREQ=2250.50;R1:NAME=y;R1:IFBW=0");
    QCOMPARE(bench.run(words("apply --dry-run @rack.json")), 0);
    QCOMPARE(bench.process().readAllStandardOutput(), "R1:NAME y -> \xc3\xa9 \"x\"\nR1:IFBW 0 -> 1\n"_ba);
    QCOMPARE(bench.sets(), ""_ba);
    QCOMPARE(bench.run(words("apply @rack.json")), 0);
    QCOMPARE(bench.sets(), "R1:NAME:\xc3\xa9 \"x\" R1:IFBW:1"_ba);
    QCOMPARE(bench.process().readAllStandardOutput(),
             "3 settings the same, 2 changed back, 0 refused: everything equals the file\n"_ba);
    const QByteArray tooLong = QByteArray(R"("CAMF":")") + QByteArray(4089, 'x') + R"(",)";
    bench.write("lost.json", settingsFile(channel("R1", tooLong + R"("NAME":"who?","AGCT":"1","FREQ":"2250.5")")));
    QCOMPARE(bench.run(words("apply --dry-run @lost.json")), 1);
    const QByteArray said = bench.process().readAllStandardError();
    QVERIFY2(said.contains("R1:NAME wanted who?: a value with a question mark"), said);
    QVERIFY2(said.contains("R1:CAMF wanted xxx") && said.contains("xxx...: with 4097 bytes it is longer"), said);
    QVERIFY2(said.contains("R1:AGCT wanted 1: the head does not know it") && !said.contains("FREQ"), said);
    bench.play("keep R1:IFBW;R1:IFBW=0");
    QCOMPARE(bench.run(words("apply --json @rack.json")), 1);
    QCOMPARE(
        bench.process().readAllStandardOutput(),
        R"({"same": 4, "changed": 0, "refused": [{"setting": "R1:IFBW", "wanted": "1", "value": "0"}], "skipped": []})"
        "\n"_ba);

    QCOMPARE(bench.run(words("dump @no/such/folder")), 64);
    bench.play("silent R1:AGCT");
    QCOMPARE(bench.run(words("dump --timeout 1000 @rack.json")), 2);
    QCOMPARE(bench.read("rack.json"), text);
}

void RemoteClientTest::apply_data()
{
    QTest::addColumn<QByteArray>("channels");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QByteArray>("sets");
    const auto row = [](const char *name, const QByteArray &channels, const char *script, int exitCode,
                        const QByteArray &output, const QByteArray &sets) {
        QTest::newRow(name) << channels << QByteArray(script) << exitCode << output << sets;
    };
    const QByteArray receiver = channel("R1", R"("IFBW":"3","FREQ":"2251.5")");
    const QByteArray slaved = channel("U0", R"("SLAVE":"1")") + ',' + receiver;
    const char kOneOfTwo[] = "1 settings the same, 1 changed back, 0 refused: everything equals the file";
    row("slaving goes off and back on", slaved, "U0:SLAVE=1;quiet U0:SLAVE;R1:FREQ=1;R1:IFBW=3", 0,
        "2 settings the same, 1 changed back, 0 refused: everything equals the file",
        "U0:SLAVE:0 R1:FREQ:2251.5 U0:SLAVE:1");
    row("slaving that was not saved comes back", receiver, "U0:SLAVE=2;R1:FREQ=1;R1:IFBW=3", 0,
        "2 settings the same, 1 changed back, 0 refused: everything equals the file",
        "U0:SLAVE:0 R1:FREQ:2251.5 U0:SLAVE:2");
    row("slaving alone", slaved, "U0:SLAVE=0;R1:FREQ=2251.5;R1:IFBW=3", 0,
        "2 settings the same, 1 changed back, 0 refused: everything equals the file", "U0:SLAVE:1");
    row("slaving that cannot be set", channel("U0", R"("SLAVE":"1?")") + ',' + receiver,
        "U0:SLAVE=2;R1:FREQ=1;R1:IFBW=3", 1,
        "1 settings the same, 1 changed back, 1 refused:\nU0:SLAVE wanted 1?, still 2",
        "U0:SLAVE:0 R1:FREQ:2251.5 U0:SLAVE:2");
    row("slaving that stays on", receiver, "U0:SLAVE=1;nak U0:SLAVE;R1:FREQ=1;R1:IFBW=3", 1,
        "1 settings the same, 0 changed back, 1 refused:\nR1:FREQ wanted 2251.5, still 1", "U0:SLAVE:0");
    row("network settings are committed before what follows",
        channel("TM1-0", R"("ADDR":"10.0.0.7","TSRC":"1")") + ',' + channel("TM1-1", R"("PORT":"7")"),
        "TM1-0:ADDR=10.0.0.1;TM1-0:TSRC=1;TM1-0:COMT=Unknown;drop TM1-0:COMT;TM1-1:PORT=8", 0,
        "1 settings the same, 2 changed back, 0 refused: everything equals the file",
        "TM1-0:ADDR:10.0.0.7 TM1-0:COMT:1 TM1-1:PORT:7");
    row("no commit for the time source", channel("TM1-0", R"("ADDR":"10.0.0.7","TSRC":"1")"),
        "TM1-0:ADDR=10.0.0.7;TM1-0:TSRC=0", 0, kOneOfTwo, "TM1-0:TSRC:1");
    row("a commit refused", channel("TM1-0", R"("PORT":"7")"), "TM1-0:PORT=8;TM1-0:COMT=x;nak TM1-0:COMT", 1,
        "0 settings the same, 1 changed back, 1 refused:\nTM1-0:COMT wanted 1, refused", "TM1-0:PORT:7 TM1-0:COMT:1");
    row("a mode that moves the rate", channel("D1", R"("RATEA":"10","DMOD":"2")"),
        "D1:DMOD=0;D1:RATEA=10;move D1:DMOD D1:RATEA=5", 0,
        "0 settings the same, 2 changed back, 0 refused: everything equals the file", "D1:DMOD:2 D1:RATEA:10");
    row("two that move each other", receiver, "R1:FREQ=1;R1:IFBW=1;move R1:FREQ R1:IFBW=9;move R1:IFBW R1:FREQ=9", 1,
        "0 settings the same, 1 changed back, 1 refused:\nR1:FREQ wanted 2251.5, still 9",
        "R1:FREQ:2251.5 R1:IFBW:3 R1:FREQ:2251.5 R1:IFBW:3");
    row("refused by the card, once", receiver, "R1:FREQ=2251.5;R1:IFBW=1;keep R1:IFBW", 1,
        "1 settings the same, 0 changed back, 1 refused:\nR1:IFBW wanted 3, still 1", "R1:IFBW:3");
    row("refused by the card, once, while slaved", receiver, "U0:SLAVE=1;R1:FREQ=2251.5;R1:IFBW=1;keep R1:IFBW", 1,
        "2 settings the same, 0 changed back, 1 refused:\nR1:IFBW wanted 3, still 1",
        "U0:SLAVE:0 R1:IFBW:3 U0:SLAVE:1");
    row("a setting that this chassis lacks", receiver, "R1:FREQ=2251.5", 1,
        "1 settings the same, 0 changed back, 1 refused:\nR1:IFBW wanted 3, refused", "");
    row("unknown channels and the time are skipped",
        receiver + ',' + channel("R7", R"("FREQ":"1")") + ',' + channel("U0", R"("TIME":"1")"),
        "R1:FREQ=2251.5;R1:IFBW=3;U0:TIME=2", 1, "2 settings the same, 0 changed back, 0 refused", "");
    row("a value that fits", channel("R1", "\"NAME\":\"" + QByteArray(4088, 'x') + '"'), "R1:NAME=y;keep R1:NAME", 1,
        "0 settings the same, 0 changed back, 1 refused:\nR1:NAME wanted " + QByteArray(80, 'x') + "..., still y",
        "R1:NAME:" + QByteArray(4088, 'x'));
    row("a value too long for a frame", channel("R1", "\"FREQ\":\"2\",\"NAME\":\"" + QByteArray(4089, 'x') + '"'),
        "R1:NAME=y;R1:FREQ=1", 1,
        "0 settings the same, 1 changed back, 1 refused:\nR1:NAME wanted " + QByteArray(80, 'x') + "..., still y",
        "R1:FREQ:2");
    row("a channel listed twice", receiver, "U0:CHANS=U0,R1,,R1;R1:FREQ=1;R1:IFBW=3;keep R1:FREQ", 1,
        "1 settings the same, 0 changed back, 1 refused:\nR1:FREQ wanted 2251.5, still 1", "R1:FREQ:2251.5");
    row("answers stop", receiver, "R1:FREQ=1;R1:IFBW=1;mute R1:IFBW", 2, "", "R1:FREQ:2251.5 R1:IFBW:3");
}

void RemoteClientTest::apply()
{
    QFETCH(QByteArray, channels);
    QFETCH(QByteArray, script);
    QFETCH(QByteArray, output);
    RemoteBench bench("U0:CHANS=U0,R1,D1,TM1-0,TM1-1;U0:SLAVE=0;" + script);
    bench.write("settings.json", settingsFile(channels));
    const int exitCode = bench.run(words("apply --timeout 1000 @settings.json"));
    QCOMPARE(bench.process().readAllStandardOutput().trimmed(), output);
    QTEST(bench.sets(), "sets");
    QTEST(exitCode, "exitCode");
}

void RemoteClientTest::interruptedApply()
{
    RemoteBench bench("U0:CHANS=U0,R1;U0:SLAVE=1;R1:FREQ=1;R1:IFBW=1;mute R1:IFBW");
    bench.write("settings.json", settingsFile(channel("R1", R"("FREQ":"2","IFBW":"2")")));
    bench.start(words("apply --timeout 60000 @settings.json"));
    QVERIFY(waitUntil([&bench] { return bench.sets() == "U0:SLAVE:0 R1:FREQ:2 R1:IFBW:2"; }));
    bench.process().terminate();
    QCOMPARE(bench.finish(), 2);
    const QByteArray said = bench.process().readAllStandardError();
    QVERIFY2(said.contains("interrupted\n") && said.contains("step 2 of 3"), said);
    QVERIFY2(said.contains("slaving was turned off, it was 1 before"), said);
}

void RemoteClientTest::wrongFiles_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("problem");
    const auto row = [](const char *name, const char *line, const QByteArray &content, const char *problem) {
        QTest::newRow(name) << words(line) << content << QByteArray(problem);
    };
    row("missing", "apply @none", "", "none: No such file");
    row("no JSON", "apply @file", "{", "no JSON");
    row("another format", "apply @file", R"({"format":"x","version":1,"channels":{}})", "not a file of settings");
    row("another version", "apply @file", R"({"format":"zirvo-settings","version":2,"channels":{}})", "version");
    row("no channels", "apply @file", R"({"format":"zirvo-settings","version":1})", "no \"channels\"");
    row("no settings", "apply @file", settingsFile(R"("R1":{})"), "R1 holds no \"settings\"");
    row("a number", "apply @file", settingsFile(channel("R1", R"("NAME":"x","FREQ":1)")), "R1:FREQ: the value is not");
    row("a frame", "apply @file", settingsFile(channel("R1", R"("NAME":"x\r\u0002U0:SLAVE:1")")), "R1:NAME: the value");
    row("a key", "apply @file", settingsFile(channel("R1", R"("NA ME":"x")")), "no blanks");
    row("what moves the cursor", "apply @file", settingsFile(R"("R1\u001b[2J":{})"), "/file: R1\\x1b[2J holds no");
    row("no recording", "replay @file", "zirvo-recording 2 2026-01-01T00:00:00.000Z\n", "not a recording");
    row("a line", "replay @file", "zirvo-recording 1 2026-01-01T00:00:00.000Z\n0.000001 remote < a\n0.1 remote < b\n",
        "line 3");
    row("an escape", "replay --send @file",
        "zirvo-recording 1 2026-01-01T00:00:00.000Z\n0.000001 remote > R1:NAME:\\x0\n", "line 2");
    row("a sign in an escape", "replay --send @file",
        "zirvo-recording 1 2026-01-01T00:00:00.000Z\n0.000001 remote > R1:NAME:\\x+1\n", "line 2");
}

void RemoteClientTest::wrongFiles()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, problem);
    RemoteBench bench("U0:CHANS=U0,R1");
    bench.write("file", content);
    QCOMPARE(bench.run(arguments), 64);
    const QByteArray said = bench.process().readAllStandardError();
    QVERIFY2(said.contains(problem), said);
    QCOMPARE(bench.sent(), ""_ba);
}

void RemoteClientTest::watch_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("lines");
    QTest::newRow("all") << words("watch --count 5")
                         << "remote R1:FREQ 1:2\nremote r2:FREQ \\x1b[2J\nstatus R1:SSLV -90\n"
                            "status D1:EYEP <2048 digits>\nremote D1:DMOD 2\n"_ba;
    QTest::newRow("patterns") << words("watch --count 3 R*:freq D1:DMOD")
                              << "remote R1:FREQ 1:2\nremote r2:FREQ \\x1b[2J\nremote D1:DMOD 2\n"_ba;
    QTest::newRow("count within one read") << words("watch --count 1 R*") << "remote R1:FREQ 1:2\n"_ba;
}

void RemoteClientTest::watch()
{
    QFETCH(QStringList, arguments);
    RemoteBench bench;
    bench.start(arguments);
    QVERIFY(bench.waitForClient());
    bench.remote().send("noise\x02R1:FRE\x02R1:FREQ:1:2\r\x02r2:FREQ:\x1b[2J\r\x02U0:REMOTE?\r");
    QVERIFY(waitUntil([&bench] { return bench.process().peek(10'000).count('\n') > 0; }));
    if (!arguments.contains(u"1"_s)) {
        bench.remote().sendFrame("R1:FREQ:" + QByteArray(70'000, 'x'));
        bench.status().sendFrame("R1:SSLV:-90");
        bench.status().sendFrame("D1:EYEP:" + QByteArray(2048, 'f'));
        QVERIFY(arguments.size() > 3 || waitUntil([&bench] { return bench.process().peek(10'000).contains("EYEP"); }));
        bench.remote().sendFrame("D1:DMOD:2");
    }
    QCOMPARE(bench.finish(), 0);
    QTEST(untimed(bench.process().readAllStandardOutput()), "lines");
}

void RemoteClientTest::endsOfWatch_data()
{
    QTest::addColumn<QByteArray>("how");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("problem");
    QTest::newRow("signal") << "signal"_ba << 0 << ""_ba;
    QTest::newRow("reader gone") << "reader"_ba << 0 << "0\n"_ba;
    QTest::newRow("cable pulled") << "cable"_ba << 2 << "zirvo-remote: remote link lost\n"_ba;
}

void RemoteClientTest::endsOfWatch()
{
    QFETCH(QByteArray, how);
    RemoteBench bench;
    if (how == "reader")
        bench.startInto(u"| head -n 1"_s, words("watch --json"));
    else
        bench.start(words("watch --json"));
    QVERIFY(bench.waitForClient());
    bench.status().sendFrame("D1:EYEP:" + QByteArray(2048, 'f'));
    QVERIFY(waitUntil([&bench] { return bench.process().canReadLine(); }));
    const QJsonObject line = QJsonDocument::fromJson(bench.process().readLine()).object();
    QCOMPARE(line[u"link"].toString() + line[u"address"].toString() + line[u"mnemonic"].toString(), u"statusD1EYEP"_s);
    QCOMPARE(line[u"value"].toString().size(), 2048);
    if (how == "signal")
        bench.process().terminate();
    else if (how == "cable")
        bench.hangUp();
    QVERIFY(waitUntil([&bench, &how] {
        if (how == "reader")
            bench.remote().sendFrame("R1:FREQ:1");
        return bench.process().state() == QProcess::NotRunning;
    }));
    QTEST(bench.finish(), "exitCode");
    QTEST(bench.process().readAllStandardError(), "problem");
}

void RemoteClientTest::blockedReader()
{
    RemoteBench bench;
    const int reader = bench.makeFifo("output", 4096);
    bench.process().setStandardOutputFile(bench.path("output"));
    bench.start(words("watch --json"));
    QVERIFY(bench.waitForClient());
    bench.remote().sendFrame("D1:EYEP:" + QByteArray(10'000, 'f'));
    int waiting = 0;
    QTRY_VERIFY(::ioctl(reader, FIONREAD, &waiting) == 0 && waiting == 4096);
    bench.process().terminate();
    QCOMPARE(bench.finish(), 0);
    ::close(reader);
}

void RemoteClientTest::lostOutput_data()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("problem");
    const QString full = u">/dev/full"_s;
    const QString closed = u">&-"_s;
    const QString left = u"| { exec <&-; echo left; }"_s;
    QTest::newRow("get, full") << full << words("get A:B") << "standard output: No space left on device\n2\n"_ba;
    QTest::newRow("get, closed") << closed << words("get A:B") << "standard output: Bad file descriptor\n2\n"_ba;
    QTest::newRow("replay, full") << full << words("replay @traffic") << "standard output: No space left"_ba;
    QTest::newRow("help, full") << full << words("help") << "standard output: No space left on device\n2\n"_ba;
    QTest::newRow("get, reader gone") << left << words("get A:B") << "the reader of standard output has gone\n2\n"_ba;
    QTest::newRow("dump, reader gone") << left << words("dump") << "the reader of standard output has gone\n2\n"_ba;
    QTest::newRow("set, reader gone") << left << words("set --no-confirm A:B 1") << "0\n"_ba;
}

void RemoteClientTest::lostOutput()
{
    QFETCH(QString, output);
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, problem);
    RemoteBench bench("silent A:B;silent U0:CHANS");
    bench.write("traffic", "zirvo-recording 1 2026-01-01T00:00:00.000Z\n0.000000 remote < R1:FREQ:1\n");
    bench.startInto(output, arguments);
    QVERIFY(!output.contains(u"left"_s) || waitUntil([&bench] { return bench.process().canReadLine(); }));
    if (arguments[0] != u"help" && arguments[0] != u"replay") {
        QVERIFY(waitUntil([&bench] { return !bench.sent().isEmpty(); }));
        bench.remote().sendFrame(arguments[0] == u"dump" ? "U0:CHANS:U0\x06" : "A:B:1\x06");
    }
    QVERIFY(bench.finish() >= 0);
    const QByteArray said = bench.process().readAllStandardError();
    QVERIFY2(said.contains(problem) && said.count('\n') <= 2, said);
    QVERIFY2(said.endsWith(problem.startsWith('0') ? "0\n" : "2\n"), said);
}

void RemoteClientTest::fifos()
{
    RemoteBench bench("U0:CHANS=U0;U0:NAME=Rack");
    int reader = bench.makeFifo("fifo");
    QCOMPARE(bench.run(words("dump @fifo")), 0);
    QCOMPARE(bench.process().readAllStandardError(), "zirvo-remote: settings of 1 channel saved\n"_ba);
    QByteArray text(65'536, 0);
    text.truncate(::read(reader, text.data(), size_t(text.size())));
    QVERIFY2(QJsonDocument::fromJson(text).object().contains(u"channels"_s), text);
    ::close(reader);

    bench.start(words("dump @fifo")); // nobody reads it
    QVERIFY(waitUntil([&bench] { return bench.sent().contains("U0:LAGC?"); }));
    bench.process().terminate();
    QCOMPARE(bench.finish(), 2);

    reader = bench.makeFifo("other");
    bench.start(words("record @other"));
    QVERIFY(bench.waitForClient());
    ::close(reader);
    bench.remote().send("\x02R1:FREQ:1\r\x02R1:FREQ:2\r");
    QCOMPARE(bench.finish(), 2);
    const QByteArray said = bench.process().readAllStandardError();
    QCOMPARE(said.count("Broken pipe"), 1);

    bench.startInto(u"| cat"_s, words("dump /dev/stdout"));
    QVERIFY(bench.finish() >= 0);
    QCOMPARE(bench.process().readAllStandardError(), "0\n"_ba);
    QVERIFY(bench.process().readAllStandardOutput().contains("\"Rack\""));
}

void RemoteClientTest::recordsOverNothing_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("what is replayed") << words("replay --send --record @./file @file") << 64;
    QTest::newRow("what is applied") << words("apply --record @./settings @settings") << 64;
    QTest::newRow("what is dumped") << words("dump --record @new @./new") << 64;
    QTest::newRow("the input is missing") << words("apply --record @file @none") << 64;
    QTest::newRow("the link does not open") << words("record --link /nowhere/at/all @file") << 2;
}

void RemoteClientTest::recordsOverNothing()
{
    QFETCH(QStringList, arguments);
    RemoteBench bench("U0:CHANS=U0,R1");
    const QByteArray traffic = "zirvo-recording 1 2026-01-01T00:00:00.000Z\n";
    const QByteArray settings = settingsFile(channel("R1", R"("FREQ":"1")"));
    bench.write("file", traffic);
    bench.write("settings", settings);
    QTEST(bench.run(arguments), "exitCode");
    QCOMPARE(bench.read("file"), traffic);
    QCOMPARE(bench.read("settings"), settings);
    QVERIFY(!QFile::exists(bench.path("new")));
}

void RemoteClientTest::recordAndReplay()
{
    RemoteBench bench;
    bench.start(words("record --count 5 @traffic"));
    QVERIFY(bench.waitForClient());
    bench.remote().sendFrame("R1:NAME:\\x41 \xe9\t");
    bench.status().sendFrame("R1:SSLV:-90");
    QTRY_VERIFY(bench.read("traffic").contains("SSLV"));
    bench.remote().sendFrame("R1:FREQ:1:2");
    QCOMPARE(bench.finish(), 0);
    const QString text = QString::fromLatin1(bench.read("traffic"));
    const QRegularExpression form(u"^zirvo-recording 1 \\d{4}-\\d\\d-\\d\\dT[\\d:.]+Z\n"
                                  "(\\d+\\.\\d{6} (remote|status) [<>] [\\x20-\\x7e]+\n){6}$"_s);
    QVERIFY2(form.match(text).hasMatch(), qPrintable(text));
    QCOMPARE(text.count(u"remote > U0:REMOTE:1\\x06\n"_s), 2); // at once, and when asked
    QVERIFY(text.contains(u"remote < R1:NAME:\\\\x41 \\xe9\\x09\n"_s));

    QCOMPARE(bench.run(words("replay --speed 0 @traffic R1:*")), 0);
    const QByteArray shown = untimed(bench.process().readAllStandardOutput());
    QVERIFY(shown.contains("remote R1:NAME \\x41 \xe9\\x09\n") && shown.endsWith("remote R1:FREQ 1:2\n"));
    QCOMPARE(shown.count('\n'), 3);
    QCOMPARE(bench.sent(), ""_ba);
}

void RemoteClientTest::replayPace()
{
    RemoteBench bench;
    bench.write("traffic", "zirvo-recording 1 2026-01-01T00:00:00.000Z\n1000.000000 remote < R1:FREQ:1\n");
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(bench.run(words("replay --json --speed 2000 @traffic")), 0);
    QVERIFY(clock.elapsed() >= 500);
    QVERIFY(bench.process().readAllStandardOutput().contains("\"time\": \"2026-01-01T00:16:40.000Z\""));
}

void RemoteClientTest::resend_data()
{
    QTest::addColumn<QByteArray>("change");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("the same") << ""_ba << 0 << "3 of 3 requests answered, 0 differently\n"_ba;
    QTest::newRow("another value") << "R1:FREQ=5"_ba << 1
                                   << "R1:FREQ was 1, now 5\n3 of 3 requests answered, 1 differently\n"_ba;
    QTest::newRow("known now") << "R1:XX=3"_ba << 1
                               << "R1:XX was refused, now 3\n3 of 3 requests answered, 1 differently\n"_ba;
    QTest::newRow("no answer") << "silent R1:XX"_ba << 2 << ""_ba;
}

void RemoteClientTest::resendsWhatCanBeSent()
{
    RemoteBench bench("R1:FREQ=1;R1:NAME=n");
    QByteArray traffic = "zirvo-recording 1 2026-01-01T00:00:00.000Z\n";
    for (const QByteArray &frame : { "R1:NAME:" + QByteArray(4089, 'x'), "R1:NAME:x\\x0d\\x02U0:SLAVE:1"_ba,
                                     "R1:NAME:who?"_ba, "R1:FR?EQ?"_ba, "R1:FREQ:"_ba, "R1:FREQ?"_ba })
        traffic += "0.000000 remote > " + frame + "\n";
    bench.write("traffic", traffic + "0.000000 remote < R1:FREQ:\\x06\n");
    QCOMPARE(bench.run(words("replay --send @traffic")), 1);
    QCOMPARE(bench.sent(), "R1:FREQ: R1:FREQ?"_ba);
    QCOMPARE(bench.process().readAllStandardOutput(), "2 of 2 requests answered, 0 differently, 4 skipped\n"_ba);
    const QByteArray said = bench.process().readAllStandardError();
    QVERIFY2(said.count("R1:NAME: ") == 3 && said.count(", skipped\n") == 4, said);
}

void RemoteClientTest::resend()
{
    QFETCH(QByteArray, change);
    RemoteBench bench("R1:FREQ=1;R1:NAME=n");
    QCOMPARE(bench.run(words("--record @traffic get R1:FREQ R1:XX R1:NAME")), 1);
    bench.play(change);
    QTEST(bench.run(words("replay --send --timeout 1000 @traffic")), "exitCode");
    QTEST(bench.process().readAllStandardOutput(), "output");
    QVERIFY(bench.sent().startsWith("R1:FREQ? R1:XX?"));
}

QTEST_GUILESS_MAIN(RemoteClientTest)
#include "tst_remote_client.moc"
