#include "support/RemoteBench.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Lines without the time at their start.
QByteArray untimed(const QByteArray &lines)
{
    return QString::fromLatin1(lines)
        .remove(QRegularExpression(u"^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} "_s, QRegularExpression::MultilineOption))
        .toLatin1();
}

/// The report of an apply that has @p refusals, one a line.
QByteArray report(int same, int changed, const QByteArrayList &refusals = {})
{
    const QByteArray text = QByteArray::number(same) + " settings the same, " + QByteArray::number(changed) +
                            " changed back, " + QByteArray::number(refusals.size()) + " refused";
    return refusals.isEmpty() ? text + ": everything equals the file\n" : text + ":\n" + refusals.join('\n') + '\n';
}

} // namespace

/// The shipped program, started as a user starts it.
class RemoteClientTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void conversations_data();
    void conversations();
    void refusals_data();
    void refusals();
    void dumpAndApply();
    void apply_data();
    void apply();
    void interruptedApply();
    void watch_data();
    void watch();
    void recordAndReplay();
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
    row("get raw", "--raw get R1:NAME", kReceiver, 0, "a:b c\n", "", "R1:NAME?");
    row("get refused", "get R1:XX R1:FREQ", kReceiver, 1, "R1:FREQ 2250.5\n", "R1:XX: refused", "R1:XX? R1:FREQ?");
    row("get silent", "get --timeout 200 R1:FREQ", "silent R1:FREQ", 2, "", "R1:FREQ: no answer", "R1:FREQ?");
    row("get answered twice", "get R1:FREQ R1:NAME R1:FREQ R1:IFBW", "R1:FREQ=1;R1:NAME=n;R1:IFBW=2;twice R1:FREQ", 0,
        "R1:FREQ 1\nR1:NAME n\nR1:FREQ 1\nR1:IFBW 2\n", "", "R1:FREQ? R1:NAME? R1:FREQ? R1:IFBW?");
    row("get answered out of order", "get R1:FREQ R1:NAME", "R1:FREQ=1;R1:NAME=n;late R1:FREQ", 0,
        "R1:FREQ 1\nR1:NAME n\n", "", "R1:FREQ? R1:NAME?");
    row("get hang-up", "get R1:FREQ", "hangup R1:FREQ", 2, "", "remote link lost", "R1:FREQ?");
    row("set", "set R1:FREQ 2251.5", kReceiver, 0, "R1:FREQ 2251.5 confirmed\n", "", "R1:FREQ:2251.5");
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
    row("set of an unknown value", "set --confirm 100 R1:CINP 1", "R1:CINP=Unknown;drop R1:CINP", 0,
        "R1:CINP 1 acknowledged, not confirmed\n", "", "R1:CINP:1 R1:CINP?");
    row("set without confirming", "set --no-confirm R1:FREQ 1", "R1:FREQ=2;keep R1:FREQ", 0, "R1:FREQ 1 acknowledged\n",
        "", "R1:FREQ:1");
    row("set of an order", "set D1:DREG 1", "D1:DREG=0;drop D1:DREG", 0, "D1:DREG 1 acknowledged, not confirmed\n", "",
        "D1:DREG:1");
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
    row("link does not open", "--link /nowhere/at/all record @new", "", 2, "", "/nowhere/at/all does not open", "");
}

void RemoteClientTest::conversations()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, script);
    RemoteBench bench(script);
    bench.remote().sendFrame("R1:FREQ:99\x06"); // an answer to an earlier client
    const int exitCode = bench.run(arguments);
    QTEST(bench.output(), "output");
    const QByteArray errors = bench.errors();
    QFETCH(QByteArray, problem);
    QVERIFY2(problem.isEmpty() ? errors.isEmpty() : errors.contains(problem), errors);
    QTEST(bench.sent(), "sent");
    QTEST(exitCode, "exitCode");
    QVERIFY(!QFile::exists(bench.path("new")));
}

void RemoteClientTest::refusals_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("problem");
    const auto usage = [](const char *name, const QStringList &arguments, const char *problem) {
        QTest::newRow(name) << arguments << QByteArray() << QByteArray(problem);
    };
    const auto file = [](const char *name, const char *command, const QByteArray &content, const char *problem) {
        QTest::newRow(name) << words(command) + QStringList(u"@file"_s) << content << QByteArray(problem);
    };
    usage("no command", {}, "no command (see: zirvo-remote --help)");
    usage("unknown command", { u"got"_s }, "no command \"got\"");
    usage("unknown option", words("get --rw=1 R1:FREQ"), "unknown option \"--rw\" (see: zirvo-remote --help)");
    usage("misspelt option", words("get -raw R1:FREQ"), "unknown option \"-raw\"");
    usage("empty value", words("get --record= R1:FREQ R1:NAME"), "--record takes a value");
    usage("missing value", words("get R1:FREQ --link"), "--link takes a value");
    usage("value of a flag", words("get --raw=true R1:FREQ"), "--raw takes no value");
    usage("option of another command", words("get --count 1 R1:FREQ"), "get does not take --count");
    usage("number", words("watch --count 1.5"), "--count takes a whole number");
    usage("number out of range", words("get --timeout 0 R1:FREQ"), "from 1 to 1000000000 (");
    usage("pattern", words("watch R1:* ["), "\"[\" is no pattern");
    usage("recording of what sends nothing", words("replay --record @file @file"), "--record only with --send");
    usage("too few", words("set R1:FREQ"), "set takes ADDR:MNEM VALUE (see: zirvo-remote help set)");
    usage("too many", words("set R1:FREQ -1 ++"), "set takes ADDR:MNEM VALUE");
    usage("no name for a file", { u"record"_s, QString() }, "the name of a file is empty");
    usage("no colon", words("get R1FREQ"), "ADDRESS:MNEMONIC");
    usage("two colons", words("get R1:FREQ:1"), "ADDRESS:MNEMONIC");
    usage("question mark in the mnemonic", words("set R1:FREQ? 1"), "no blanks");
    usage("empty setting", { u"set"_s, u"R1:NAME"_s, QString() }, "empty value");
    usage("frame in the value", { u"set"_s, u"R1:NAME"_s, u"x\r\x02U0:SLAVE:1"_s }, "control characters");
    usage("a long value", { u"set"_s, u"R1:NAME"_s, QString(4089, u'x') }, "with 4097 bytes it is longer");
    usage("query in the value", words("set R1:NAME who?"), "question mark");

    usage("missing file", words("apply --record @new @none"), "none: No such file");
    usage("a recording over the dump", words("dump --record @new @./new"), "/new: the recording would destroy it");
    file("a recording over the replay", "replay --send --record @./file", kRecording, "the recording would destroy it");
    file("a recording over the settings", "apply --record @./file", settingsFile(channel("R1", R"("FREQ":"1")")),
         "the recording would destroy it");
    file("no JSON", "apply", "{", "no JSON");
    file("another format", "apply", R"({"format":"x","version":1,"channels":{}})", "not a file of settings");
    file("another version", "apply", R"({"format":"zirvo-settings","version":2,"channels":{}})", "version");
    file("no channels", "apply", R"({"format":"zirvo-settings","version":1})", "no \"channels\"");
    file("no settings", "apply", settingsFile(R"("R1":{})"), "R1 holds no \"settings\"");
    file("a number", "apply", settingsFile(channel("R1", R"("NAME":"x","FREQ":1)")), "R1:FREQ: the value is not");
    file("a frame", "apply", settingsFile(channel("R1", R"("NAME":"x\r\u0002U0:SLAVE:1")")), "R1:NAME: the value");
    file("a key", "apply", settingsFile(channel("R1", R"("NA ME":"x")")), "no blanks");
    file("what moves the cursor", "apply", settingsFile(R"("R1\u001b[2J":{})"), "/file: R1\\x1b[2J holds no");
    file("no recording", "replay", "zirvo-recording 2 2026-01-01T00:00:00.000Z\n", "not a recording");
    file("a line", "replay", kRecording + "0.000001 remote < a\n0.1 remote < b\n", "line 3");
    file("an earlier line", "replay", kRecording + "0.000001 remote < a\n0.000000 remote < b\n", "line 3");
    file("an escape", "replay --send", kRecording + "0.000001 remote > R1:NAME:\\x0\n", "line 2");
    file("a sign in an escape", "replay --send", kRecording + "0.000001 remote > R1:NAME:\\x+1\n", "line 2");
}

void RemoteClientTest::refusals()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, problem);
    RemoteBench bench("R1:FREQ=1;R1:NAME=x;U0:CHANS=U0,R1");
    bench.write("file", content);
    QCOMPARE(bench.run(arguments), 64);
    const QByteArray errors = bench.errors();
    QVERIFY2(errors.contains(problem), errors);
    QCOMPARE(bench.remote().bytes(), ""_ba);
    QCOMPARE(bench.read("file"), content);
    QVERIFY(!QFile::exists(bench.path("new")));
}

void RemoteClientTest::dumpAndApply()
{
    RemoteBench bench("U0:CHANS=U0,R1,X9;U0:SLAVE=0;R1:FREQ=2250.5;R1:IFBW=1;"
                      "R1:NAME=\xc3\xa9 \"x\"");
    QCOMPARE(bench.run(words("dump @rack.json")), 0);
    const QByteArray text = bench.read("rack.json");
    bench.play("R1:FREQ=2250.50;R1:NAME=y;R1:IFBW=0");
    QCOMPARE(bench.run(words("apply --dry-run @rack.json")), 0);
    QCOMPARE(bench.output(), "R1:NAME y -> \xc3\xa9 \"x\"\nR1:IFBW 0 -> 1\n"_ba);
    QCOMPARE(bench.sets(), ""_ba);
    QCOMPARE(bench.run(words("apply @rack.json")), 0);
    QCOMPARE(bench.sets(), "R1:NAME:\xc3\xa9 \"x\" R1:IFBW:1"_ba);
    QCOMPARE(bench.output(), report(2, 2));
    bench.play("keep R1:IFBW;R1:IFBW=0");
    QCOMPARE(bench.run(words("apply --json @rack.json")), 1);
    QCOMPARE(
        bench.output(),
        R"({"same": 3, "changed": 0, "refused": [{"setting": "R1:IFBW", "wanted": "1", "value": "0"}], "skipped": []})"
        "\n"_ba);

    bench.write("lost.json", settingsFile(channel("R1", R"("NAME":"who?","AGCT":"1","FREQ":"2250.5")")));
    QCOMPARE(bench.run(words("apply --dry-run @lost.json")), 1);
    QCOMPARE(bench.errors(), "zirvo-remote: R1:NAME wanted who?: a value with a question mark cannot be set from here\n"
                             "zirvo-remote: R1:AGCT wanted 1: the head does not know it\n"_ba);

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
    const auto row = [](const char *name, const QByteArray &channels, const char *script, const QByteArray &output,
                        const QByteArray &sets) {
        const int exitCode = output.isEmpty() ? 2 : output.contains("everything equals") ? 0 : 1;
        QTest::newRow(name) << channels << QByteArray(script) << exitCode << output << sets;
    };
    const QByteArray receiver = channel("R1", R"("IFBW":"3","FREQ":"2251.5")");
    const QByteArray slaved = channel("U0", R"("SLAVE":"1")") + ',' + receiver;
    row("slaving goes off and back on", slaved, "U0:SLAVE=1;quiet U0:SLAVE;R1:FREQ=1;R1:IFBW=3", report(2, 1),
        "U0:SLAVE:0 R1:FREQ:2251.5 U0:SLAVE:1");
    row("slaving that was not saved comes back", receiver, "U0:SLAVE=2;R1:FREQ=1;R1:IFBW=3", report(2, 1),
        "U0:SLAVE:0 R1:FREQ:2251.5 U0:SLAVE:2");
    row("slaving alone", slaved, "R1:FREQ=2251.5;R1:IFBW=3", report(2, 1), "U0:SLAVE:1");
    row("slaving that cannot be set", channel("U0", R"("SLAVE":"1?")") + ',' + receiver,
        "U0:SLAVE=2;R1:FREQ=1;R1:IFBW=3", report(1, 1, { "U0:SLAVE wanted 1?, still 2" }),
        "U0:SLAVE:0 R1:FREQ:2251.5 U0:SLAVE:2");
    row("slaving that stays on", receiver, "U0:SLAVE=1;nak U0:SLAVE;R1:FREQ=1;R1:IFBW=3",
        report(1, 0, { "R1:FREQ wanted 2251.5, still 1" }), "U0:SLAVE:0");
    row("a commit refused", channel("TM1-0", R"("PORT":"7")"), "TM1-0:PORT=8;TM1-0:COMT=x;nak TM1-0:COMT",
        report(0, 1, { "TM1-0:COMT wanted 1, refused" }), "TM1-0:PORT:7 TM1-0:COMT:1");
    row("a mode that moves the rate", channel("D1", R"("RATEA":"10","DMOD":"2")"),
        "D1:DMOD=0;D1:RATEA=10;move D1:DMOD D1:RATEA=5", report(0, 2), "D1:DMOD:2 D1:RATEA:10");
    row("two that move each other", receiver, "R1:FREQ=1;R1:IFBW=1;move R1:FREQ R1:IFBW=9;move R1:IFBW R1:FREQ=9",
        report(0, 1, { "R1:FREQ wanted 2251.5, still 9" }), "R1:FREQ:2251.5 R1:IFBW:3 R1:FREQ:2251.5 R1:IFBW:3");
    row("refused by the card, once, while slaved", receiver, "U0:SLAVE=1;R1:FREQ=2251.5;R1:IFBW=1;keep R1:IFBW",
        report(2, 0, { "R1:IFBW wanted 3, still 1" }), "U0:SLAVE:0 R1:IFBW:3 U0:SLAVE:1");
    row("an unknown channel", receiver + ',' + channel("R7", R"("FREQ":"1")"), "R1:FREQ=2251.5;R1:IFBW=3",
        "2 settings the same, 0 changed back, 0 refused\n", "");
    row("a channel listed twice", receiver, "U0:CHANS=U0,R1,,R1;R1:FREQ=1;R1:IFBW=3;keep R1:FREQ",
        report(1, 0, { "R1:FREQ wanted 2251.5, still 1" }), "R1:FREQ:2251.5");
    row("answers stop", receiver, "R1:FREQ=1;R1:IFBW=1;mute R1:IFBW", "", "R1:FREQ:2251.5 R1:IFBW:3");
}

void RemoteClientTest::apply()
{
    QFETCH(QByteArray, channels);
    QFETCH(QByteArray, script);
    RemoteBench bench("U0:CHANS=U0,R1,D1,TM1-0;U0:SLAVE=0;" + script);
    bench.write("settings.json", settingsFile(channels));
    const int exitCode = bench.run(words("apply --timeout 1000 @settings.json"));
    QTEST(bench.output(), "output");
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
    QCOMPARE(bench.errors(), "zirvo-remote: interrupted\nzirvo-remote: 3 settings were sent, step 2 of 3 in pass 1; "
                             "slaving was turned off, it was 1 before\n"_ba);
}

void RemoteClientTest::watch_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("lines");
    QTest::newRow("all") << words("watch --count 5")
                         << "remote D1:D 2 remote R1:FREQ 1:2 remote r2:FREQ \\x1b[2J "
                            "status D1:EYEP <2048 digits> status R1:SSLV -90"_ba;
    QTest::newRow("patterns") << words("watch --count 3 R*:freq [CD]1:[D]")
                              << "remote D1:D 2 remote R1:FREQ 1:2 remote r2:FREQ \\x1b[2J"_ba;
    QTest::newRow("count within one read") << words("watch --count 1 R*:FREQ") << "remote R1:FREQ 1:2"_ba;
}

void RemoteClientTest::watch()
{
    QFETCH(QStringList, arguments);
    RemoteBench bench;
    bench.start(arguments);
    QVERIFY(bench.waitForClient());
    bench.status().send("\x02R1:SSLV:-90\r\x02"
                        "D1:EYEP:" +
                        QByteArray(2048, 'f') + '\r');
    bench.remote().send("noise\x02R1:FRE\x02R1:FREQ:1:2\r\x02r2:FREQ:\x1b[2J\r\x02U0:REMOTE?\r\x02"
                        "D1:D:2\r");
    QCOMPARE(bench.finish(), 0);
    QByteArrayList lines = untimed(bench.output()).trimmed().split('\n');
    std::ranges::sort(lines); // the two links keep no order between them
    QTEST(lines.join(' '), "lines");
}

void RemoteClientTest::recordAndReplay()
{
    RemoteBench bench;
    bench.start(words("record --count 5 @traffic"));
    QVERIFY(bench.waitForClient());
    bench.remote().sendFrame("U0:REMOTE?");
    bench.remote().sendFrame("R1:NAME:\\x41 \xe9\t");
    bench.status().sendFrame("R1:SSLV:-90");
    QTRY_VERIFY(bench.read("traffic").count('\n') == 6);
    bench.remote().sendFrame("R1:FREQ:1:2");
    QCOMPARE(bench.finish(), 0);
    const QString text = QString::fromLatin1(bench.read("traffic"));
    const QRegularExpression form(u"^zirvo-recording 1 \\d{4}-\\d\\d-\\d\\dT[\\d:.]+Z\n"
                                  "(\\d+\\.\\d{6} (remote|status) [<>] [\\x20-\\x7e]+\n){6}$"_s);
    QVERIFY2(form.match(text).hasMatch(), qPrintable(text));
    QCOMPARE(text.count(u"remote > U0:REMOTE:1\\x06\n"_s), 2); // at once, and when queried
    QVERIFY(text.contains(u"remote < R1:NAME:\\\\x41 \\xe9\\x09\n"_s));

    QCOMPARE(bench.run(words("replay --speed 0 @traffic R1:*")), 0);
    const QByteArrayList shown = untimed(bench.output()).split('\n');
    QCOMPARE(QSet(shown.begin(), shown.end()),
             QSet<QByteArray>({ "remote R1:NAME \\x41 \xe9\\x09", "status R1:SSLV -90", "remote R1:FREQ 1:2", "" }));
    QCOMPARE(bench.sent(), ""_ba);
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

void RemoteClientTest::resend()
{
    QFETCH(QByteArray, change);
    RemoteBench bench("R1:FREQ=1;R1:NAME=n");
    QCOMPARE(bench.run(words("--record @traffic get R1:FREQ R1:XX R1:NAME")), 1);
    bench.play(change);
    QTEST(bench.run(words("replay --send --timeout 1000 @traffic")), "exitCode");
    QTEST(bench.output(), "output");
    QVERIFY(bench.sent().startsWith("R1:FREQ? R1:XX?"));
}

void RemoteClientTest::resendsWhatCanBeSent()
{
    RemoteBench bench("R1:FREQ=1");
    QByteArray traffic = kRecording;
    for (const QByteArray &frame : { "R1:NAME:" + QByteArray(4089, 'x'), "R1:NAME:x\\x0d\\x02U0:SLAVE:1"_ba,
                                     "R1:NAME:who?"_ba, "R1:FR?EQ?"_ba, "R1:FREQ:"_ba, "R1:FREQ?"_ba })
        traffic += "0.000000 remote > " + frame + "\n";
    bench.write("traffic", traffic + "0.000000 remote < R1:FREQ:\\x06\n");
    QCOMPARE(bench.run(words("replay --send @traffic")), 1);
    QCOMPARE(bench.sent(), "R1:FREQ: R1:FREQ?"_ba);
    QCOMPARE(bench.output(), "2 of 2 requests answered, 0 differently, 4 skipped\n"_ba);
    QCOMPARE(bench.errors().count(", skipped\n"), 4);
}

QTEST_GUILESS_MAIN(RemoteClientTest)
#include "tst_remote_client.moc"
