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

void RemoteClientFilesTest::interrupted_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("waits for a reader to record") << words("set --record @unread R1:FREQ 2");
    QTest::newRow("waits for a reader to save") << words("dump @unread");
    QTest::newRow("waits for an answer") << words("get --timeout 60000 R1:MUTE");
    QTest::newRow("tells a problem") << words("get R1:XX");
}

void RemoteClientFilesTest::interrupted()
{
    QFETCH(QStringList, arguments);
    RemoteBench bench("U0:CHANS=U0;U0:NAME=Rack;R1:FREQ=1;silent R1:MUTE");
    ::close(bench.makeFifo("unread"));
    const int silent = bench.makeFifo("silent");
    const int writer = ::open(QFile::encodeName(bench.path("silent")).constData(), O_WRONLY | O_CLOEXEC);
    const int messages = bench.makeFifo("messages", 4096);
    if (arguments.contains(u"R1:XX"_s)) {
        const int full = ::open(QFile::encodeName(bench.path("messages")).constData(), O_WRONLY | O_CLOEXEC);
        QCOMPARE(::write(full, QByteArray(4096, ' ').constData(), 4096), 4096);
        ::close(full);
    }
    bench.process().setStandardErrorFile(bench.path("messages"));
    bench.start(arguments);
    const bool sends = arguments[0] == u"get" || arguments[0] == u"dump";
    QVERIFY(waitUntil([&] { return bench.waitsForSignal() && !(sends && bench.sent().isEmpty()); }));
    bench.process().terminate();
    QCOMPARE(bench.finish(), 2);
    QByteArray said(8192, 0);
    said.truncate(::read(messages, said.data(), size_t(said.size())));
    QVERIFY2(said.contains("zirvo-remote: interrupted\n") || said.startsWith("    "), said);
    QCOMPARE(bench.sets(), ""_ba);
    for (const int end : { silent, writer, messages })
        ::close(end);
}

QTEST_GUILESS_MAIN(RemoteClientFilesTest)
#include "tst_remote_client_files.moc"
