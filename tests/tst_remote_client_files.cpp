#include "support/RemoteBench.h"

#include <QDir>
#include <QTest>

#include <sys/mount.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray kRecording = "zirvo-recording 1 2026-01-01T00:00:00.000Z\n";
constexpr int kRoom = 4096; // enough for the file that locks a serial port

/// A file system of one page, which the first file fills; not everybody may mount one.
class FullDisk
{
public:
    explicit FullDisk(const QString &path) : m_path(QFile::encodeName(path))
    {
        if (!QDir().mkpath(path))
            qFatal("no folder to be had");
        m_there = ::mount("tmpfs", m_path.constData(), "tmpfs", 0, "size=4k") == 0;
    }
    ~FullDisk()
    {
        if (m_there)
            ::umount2(m_path.constData(), MNT_DETACH);
    }
    Q_DISABLE_COPY_MOVE(FullDisk)
    [[nodiscard]] bool isThere() const { return m_there; }

private:
    QByteArray m_path;
    bool m_there = false;
};

} // namespace

/// Full disks, files that are none, and signals while the program waits for a file.
class RemoteClientFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fullDisk_data();
    void fullDisk();
    void fullDiskWhileRecording_data();
    void fullDiskWhileRecording();
    void hostileFiles_data();
    void hostileFiles();
    void cutOffRecording();
    void interrupted_data();
    void interrupted();
};

void RemoteClientFilesTest::fullDisk_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("problem");
    const auto row = [](const char *name, const char *line, const char *problem) {
        QTest::newRow(name) << words(line) << QByteArray(problem);
    };
    row("dump over a file", "dump @file", "/file: File too large\n");
    row("dump a new file", "dump @new", "/new: File too large\n");
    row("dump over a file, nothing free", "dump @disk/file", "/disk/file: No space left on device\n");
    row("dump into a device", "dump /dev/full", "/dev/full: No space left on device\n");
    row("record over a file, nothing free", "record @disk/file", "/disk/file: No space left on device\n");
    row("record into a device", "record /dev/full", "/dev/full: No space left on device\n");
}

/// A backup that finds no room leaves what was there.
void RemoteClientFilesTest::fullDisk()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, problem);
    RemoteBench bench("U0:CHANS=U0;U0:NAME=" + QByteArray(kRoom, 'x'));
    const FullDisk disk(bench.path("disk"));
    if (problem.contains("/disk/") && !disk.isThere())
        QSKIP("no file system can be mounted here");
    const QByteArray older = kRecording + "0.000000 remote < R1:FREQ:1\n";
    bench.write("file", older);
    bench.write("disk/file", older);
    bench.limitFiles(kRoom);
    QCOMPARE(bench.run(arguments), 2);
    const QByteArray said = bench.process().readAllStandardError();
    QVERIFY2(said.contains(problem) && !said.contains("saved"), said);
    for (const char *folder : { "", "disk" }) {
        const QDir left(bench.path(folder));
        QCOMPARE(left.entryList(QDir::Files | QDir::NoSymLinks | QDir::Hidden), QStringList(u"file"_s));
    }
    QCOMPARE(bench.read("file") + bench.read("disk/file"), older + older);
}

void RemoteClientFilesTest::fullDiskWhileRecording_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("problem");
    QTest::newRow("record") << words("record @file") << "/file: File too large\nzirvo-remote: 1 frames recorded\n"_ba;
    QTest::newRow("get") << words("get --record @file R1:A R1:B") << "/file: File too large\n"_ba;
}

/// What fits of a recording is a recording: its last line is whole.
void RemoteClientFilesTest::fullDiskWhileRecording()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, problem);
    RemoteBench bench("silent R1:A");
    bench.limitFiles(kRoom);
    bench.start(arguments);
    QVERIFY(bench.remote().waitForFrame("U0:REMOTE:1\x06"));
    bench.remote().sendFrame("R1:FREQ:1");
    bench.remote().sendFrame("R1:NAME:" + QByteArray(kRoom, 'n'));
    QCOMPARE(bench.finish(), 2);
    const QByteArray said = bench.process().readAllStandardError();
    QVERIFY2(said.contains(problem), said);
    const QByteArray text = bench.read("file");
    QVERIFY2(text.startsWith("zirvo-recording 1 ") && text.endsWith("remote < R1:FREQ:1\n"), text);
    QCOMPARE(bench.run(words("replay --speed 0 @file")), 0);
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
    row("a recording from a device", "replay /dev/zero", 64, "/dev/zero: a folder or a device, not a file\n");
    row("requests from a device", "replay --send /dev/zero", 64, "/dev/zero: a folder or a device, not a file\n");
    row("settings from a folder", "apply @", 64, ": a folder or a device, not a file\n");
    row("settings from nobody", "apply @fifo", 64, "/fifo: nobody writes into it\n");
    row("a recording from nobody", "replay @fifo", 64, "/fifo: nobody writes into it\n");
    row("large settings", "apply @large", 64, "/large: larger than 16 MiB, not a file of settings\n");
    row("a large recording", "replay @large", 64, "/large: not a recording");
    row("a long line", "replay @longline", 64, "/longline: line 2 is no frame of a recording\n");
    row("many unknown settings", "apply --dry-run @unknown", 1,
        "R1:X100009 is not known here and is skipped\n"
        "zirvo-remote: 299990 more are not known here and are skipped\n");
}

/// Whatever is given for a file ends with a message, soon and without taking much memory.
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
    const QByteArray said = bench.process().readAllStandardError();
    QVERIFY2(said.contains(problem), said.left(2000));
    QVERIFY2(said.count('\n') <= 11, said.left(2000));
    rusage used = {};
    QVERIFY(::getrusage(RUSAGE_CHILDREN, &used) == 0);
    QVERIFY2(used.ru_maxrss < 1024 * 1024, QByteArray::number(qint64(used.ru_maxrss)));
}

void RemoteClientFilesTest::cutOffRecording()
{
    RemoteBench bench("R1:FREQ=1;R1:FR=1");
    bench.write("file", kRecording + "0.000000 remote > R1:FREQ?\n0.000001 remote > R1:FR?");
    QCOMPARE(bench.run(words("replay --send @file")), 0);
    QCOMPARE(bench.sent(), "R1:FREQ?"_ba);
    QVERIFY(bench.process().readAllStandardError().endsWith("/file: the last line is cut off and left out\n"));
}

void RemoteClientFilesTest::interrupted_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("reads settings") << words("apply @silent") << 2;
    QTest::newRow("reads a recording") << words("replay @silent") << 2;
    QTest::newRow("waits for a reader to record") << words("set --record @unread R1:FREQ 2") << 2;
    QTest::newRow("waits for a reader to save") << words("dump @unread") << 2;
    QTest::newRow("waits for an answer") << words("get --timeout 60000 R1:MUTE") << 2;
    QTest::newRow("tells a problem") << words("get R1:XX") << 2;
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
    QByteArray said(8192, 0);
    said.truncate(::read(messages, said.data(), size_t(said.size())));
    const char *wanted = pipeFull ? "    " : exitCode == 0 ? "" : "zirvo-remote: interrupted\n";
    QVERIFY2(said.endsWith(wanted), said);
    QCOMPARE(bench.process().readAllStandardOutput(), ""_ba);
    QCOMPARE(bench.sets(), ""_ba);
    for (const int end : { silent, writer, messages })
        ::close(end);
}

QTEST_GUILESS_MAIN(RemoteClientFilesTest)
#include "tst_remote_client_files.moc"
