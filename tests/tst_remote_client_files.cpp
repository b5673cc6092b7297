#include "support/RemoteBench.h"

#include <QDir>
#include <QTest>

#include <sys/ioctl.h>
#include <sys/mount.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kRoom = 4096; // enough for the file that locks a serial port

} // namespace

/// Files, pipes and devices of every kind, and signals while the program waits for them.
class RemoteClientFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fullDisk_data();
    void fullDisk();
    void fullDiskWhileRecording();
    void lostOutput_data();
    void lostOutput();
    void fifos();
    void hostileFiles_data();
    void hostileFiles();
    void interrupted_data();
    void interrupted();
    void interruptedWhileBlocked();
};

void RemoteClientFilesTest::fullDisk_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("problem");
    const auto row = [](const char *name, const char *line, const char *problem) {
        QTest::newRow(name) << words(line) << QByteArray(problem);
    };
    row("dump over a file", "dump @file", "/file: File too large\n");
    row("dump over a file, nothing free", "dump @disk/file", "/disk/file: No space left on device\n");
    row("dump into a device", "dump /dev/full", "/dev/full: No space left on device\n");
    row("record over a file, nothing free", "record @disk/file", "/disk/file: No space left on device\n");
}

/// A dump that finds no room leaves an older file as it is.
void RemoteClientFilesTest::fullDisk()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, problem);
    RemoteBench bench("U0:CHANS=U0;U0:NAME=" + QByteArray(kRoom, 'x'));
    // A file system with room for one file; mounting needs privileges.
    const QByteArray disk = QFile::encodeName(bench.path("disk"));
    QVERIFY(QDir().mkpath(bench.path("disk")));
    if (::mount("tmpfs", disk.constData(), "tmpfs", 0, "size=4k,nr_inodes=2") != 0 && problem.contains("/disk/"))
        QSKIP("no file system can be mounted here");
    const auto unmount = qScopeGuard([&disk] { ::umount2(disk.constData(), MNT_DETACH); });
    bench.write("file", kRecording);
    bench.write("disk/file", kRecording);
    bench.limitFiles(kRoom);
    QCOMPARE(bench.run(arguments), 2);
    const QByteArray errors = bench.errors();
    QVERIFY2(errors.contains(problem), errors);
    QCOMPARE(errors.count('\n'), 1); // no note that it was saved
    for (const char *folder : { "", "disk" }) {
        const QDir left(bench.path(folder));
        QCOMPARE(left.entryList(QDir::Files | QDir::NoSymLinks | QDir::Hidden), QStringList(u"file"_s));
    }
    QCOMPARE(bench.read("file") + bench.read("disk/file"), kRecording + kRecording);
}

/// What fits of a recording is a recording: its last line is whole.
void RemoteClientFilesTest::fullDiskWhileRecording()
{
    RemoteBench bench;
    bench.limitFiles(kRoom);
    bench.start(words("record @file"));
    QVERIFY(bench.waitForClient());
    bench.remote().sendFrame("R1:FREQ:1");
    bench.remote().sendFrame("R1:NAME:" + QByteArray(kRoom, 'n'));
    QCOMPARE(bench.finish(), 2);
    const QByteArray errors = bench.errors();
    QVERIFY2(errors.endsWith("/file: File too large\nzirvo-remote: 1 frames recorded\n"), errors);
    const QByteArray text = bench.read("file");
    QVERIFY2(text.endsWith("remote < R1:FREQ:1\n"), text);
    QCOMPARE(bench.run(words("replay --speed 0 @file")), 0);
}

void RemoteClientFilesTest::lostOutput_data()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("problem");
    const QString full = u">/dev/full"_s;
    const QString left = u"| { exec <&-; echo left; }"_s;
    QTest::newRow("get, full") << full << words("get A:B") << "standard output: No space left on device\n2\n"_ba;
    QTest::newRow("get, closed") << u">&-"_s << words("get A:B") << "standard output: Bad file descriptor\n2\n"_ba;
    QTest::newRow("replay, full") << full << words("replay @traffic") << "output: No space left on device\n2\n"_ba;
    QTest::newRow("help, full") << full << words("help") << "standard output: No space left on device\n2\n"_ba;
    QTest::newRow("get, reader gone") << left << words("get A:B") << "the reader of standard output has gone\n2\n"_ba;
    QTest::newRow("dump, reader gone") << left << words("dump") << "the reader of standard output has gone\n2\n"_ba;
    QTest::newRow("set, reader gone") << left << words("set --no-confirm A:B 1") << "0\n"_ba;
    QTest::newRow("watch, reader gone") << left << words("watch --json") << "0\n"_ba;
}

void RemoteClientFilesTest::lostOutput()
{
    QFETCH(QString, output);
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, problem);
    RemoteBench bench("silent A:B;silent U0:CHANS");
    bench.write("traffic", kRecording + "0.000000 remote < R1:FREQ:1\n");
    bench.startInto(output, arguments);
    QVERIFY(!output.contains(u"left"_s) || waitUntil([&bench] { return bench.process().canReadLine(); }));
    if (arguments[0] != u"help" && arguments[0] != u"replay") {
        QVERIFY(arguments[0] == u"watch" ? bench.waitForClient()
                                         : waitUntil([&bench] { return !bench.sent().isEmpty(); }));
        bench.remote().sendFrame(arguments[0] == u"dump" ? "U0:CHANS:U0\x06" : "A:B:1\x06");
    }
    QCOMPARE(bench.finish(), 0); // of the shell
    const QByteArray errors = bench.errors();
    QVERIFY2(errors.endsWith(problem), errors);
    QVERIFY2(errors.count('\n') <= 2, errors);
}

void RemoteClientFilesTest::fifos()
{
    RemoteBench bench("U0:CHANS=U0;U0:NAME=Rack");
    int reader = bench.makeFifo("fifo");
    QCOMPARE(bench.run(words("dump @fifo")), 0);
    QCOMPARE(bench.errors(), "zirvo-remote: settings of 1 channel saved\n"_ba);
    QByteArray text(65'536, 0);
    text.truncate(::read(reader, text.data(), size_t(text.size())));
    QVERIFY2(text.endsWith("}\n"), text);
    ::close(reader);

    reader = bench.makeFifo("other");
    bench.start(words("record @other"));
    QVERIFY(bench.waitForClient());
    ::close(reader);
    bench.remote().send("\x02R1:FREQ:1\r\x02R1:FREQ:2\r");
    QCOMPARE(bench.finish(), 2);
    QCOMPARE(bench.errors().count("Broken pipe"), 1);

    bench.startInto(u"| cat"_s, words("dump /dev/stdout"));
    QCOMPARE(bench.finish(), 0);
    QCOMPARE(bench.errors(), "0\n"_ba);
    QCOMPARE(bench.output().size(), text.size());
}

void RemoteClientFilesTest::hostileFiles_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("problem");
    const auto row = [](const char *name, const char *line, int exitCode, const char *problem) {
        QTest::newRow(name) << words(line) << exitCode << QByteArray(problem);
    };
    row("settings from a device", "apply /dev/zero", 64, "/dev/zero: a folder or a device, not a file\n");
    row("settings from a folder", "apply @", 64, ": a folder or a device, not a file\n");
    row("a recording from nobody", "replay @fifo", 64, "/fifo: nobody writes into it\n");
    row("large settings", "apply @large", 64, "/large: larger than 16 MiB, not a file of settings\n");
    row("a large recording", "replay @large", 64, "/large: not a recording");
    row("a long line", "replay @longline", 64, "/longline: line 2 is no frame of a recording\n");
    row("many unknown settings", "apply --dry-run @unknown", 1,
        "R1:X100009 is not known here and is skipped\n"
        "zirvo-remote: 299990 more are not known here and are skipped\n");
}

/// Any input file ends with a message, soon and without taking much memory.
void RemoteClientFilesTest::hostileFiles()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, problem);
    RemoteBench bench("U0:CHANS=U0,R1;U0:SLAVE=0");
    ::close(bench.makeFifo("fifo"));
    QByteArrayList unknown;
    for (int i = 100'000; problem.contains("more") && i < 400'000; ++i)
        unknown.append("\"X" + QByteArray::number(i) + R"(":"1")");
    bench.write("unknown", settingsFile(channel("R1", unknown.join(','))));
    QVERIFY(QFile::resize(bench.write("large", ""), 2'147'483'648));
    QVERIFY(QFile::resize(bench.write("longline", kRecording + "0.000000 remote < "), 2'147'483'648));
    QTEST(bench.run(arguments), "exitCode");
    const QByteArray errors = bench.errors();
    QVERIFY2(errors.contains(problem), errors.left(2000));
    QVERIFY2(errors.count('\n') <= 11, errors.left(2000));
    rusage used = {};
    QVERIFY(::getrusage(RUSAGE_CHILDREN, &used) == 0);
    QVERIFY2(used.ru_maxrss < 1024L * 1024, QByteArray::number(qint64(used.ru_maxrss)));
}

void RemoteClientFilesTest::interrupted_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("reads a recording") << words("replay @silent") << 2;
    QTest::newRow("waits for a reader to record") << words("set --record @unread R1:FREQ 2") << 2;
    QTest::newRow("waits for a reader to save") << words("dump @unread") << 2;
    QTest::newRow("waits for an answer") << words("get --timeout 60000 R1:MUTE") << 2;
    QTest::newRow("reports a problem") << words("get R1:XX") << 2;
    QTest::newRow("waits for next month") << words("replay @month") << 0;
    QTest::newRow("waits for ever") << words("replay --speed 1e-300 @month") << 0;
}

void RemoteClientFilesTest::interrupted()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    RemoteBench bench("U0:CHANS=U0;U0:NAME=Rack;R1:FREQ=1;silent R1:MUTE");
    ::close(bench.makeFifo("unread"));
    // A timer of 32 bits takes these milliseconds for none.
    bench.write("month", kRecording + "4294967.296000 remote < R1:FREQ:1\n");
    const int silent = bench.makeFifo("silent");
    const int writer = ::open(QFile::encodeName(bench.path("silent")).constData(), O_WRONLY | O_CLOEXEC);
    const int messages = bench.makeFifo("messages", 4096);
    const bool pipeFull = arguments.contains(u"R1:XX"_s);
    if (pipeFull) {
        const int full = ::open(QFile::encodeName(bench.path("messages")).constData(), O_WRONLY | O_CLOEXEC);
        QCOMPARE(::write(full, QByteArray(4096, ' ').constData(), 4096), 4096);
        ::close(full);
    }
    bench.process().setStandardErrorFile(bench.path("messages"));
    bench.start(arguments);
    const bool sends = arguments[0] == u"get" || arguments[0] == u"dump";
    QVERIFY(waitUntil([&] { return bench.waitsForSignal() && !(sends && bench.sent().isEmpty()); }));
    bench.process().terminate();
    QCOMPARE(bench.finish(), exitCode);
    QByteArray errors(8192, 0);
    errors.truncate(::read(messages, errors.data(), size_t(errors.size())));
    const char *wanted = pipeFull ? "    " : exitCode == 0 ? "" : "zirvo-remote: interrupted\n";
    QVERIFY2(errors.endsWith(wanted), errors);
    QCOMPARE(bench.output(), ""_ba);
    QCOMPARE(bench.sets(), ""_ba);
    for (const int end : { silent, writer, messages })
        ::close(end);
}

void RemoteClientFilesTest::interruptedWhileBlocked()
{
    RemoteBench bench;
    const int reader = bench.makeFifo("output", 4096);
    bench.process().setStandardOutputFile(bench.path("output"));
    bench.start(words("watch --json"));
    QVERIFY(bench.waitForClient());
    bench.remote().sendFrame("D1:EYEP:" + QByteArray(10'000, 'f'));
    int waiting = 0;
    QTRY_COMPARE(::ioctl(reader, FIONREAD, &waiting) + waiting, 4096);
    bench.process().terminate();
    QCOMPARE(bench.finish(), 0);
    ::close(reader);
}

QTEST_GUILESS_MAIN(RemoteClientFilesTest)
#include "tst_remote_client_files.moc"
