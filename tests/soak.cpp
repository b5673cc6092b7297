#include "support/Program.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextStream>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kSettledMinute = 10; // growth is counted from here
constexpr qint64 kMaxGrowthKib = 2048;
constexpr int kMaxWaiting = 50;   // commands for the chassis, with nothing going on
constexpr int kMaxToClient = 800; // about the number of values that there are
constexpr int kActionMs = 100;

struct Health
{
    qint64 rssKib = 0;
    qsizetype descriptors = 0;
    double cpuSeconds = 0;
    QByteArray told; ///< the program's own line: objects, timer events in 10 s, messages that wait, bytes not written

    [[nodiscard]] int count(const QByteArray &name) const
    {
        return told.mid(told.indexOf(name + '=') + name.size() + 1).split(' ').value(0).toInt();
    }
};

/// The front panel under a simulated chassis with ten times the usual traffic, an operator who does anything, a client
/// that comes and goes, and cables that are pulled; all of it from one seed.
class Soak
{
public:
    explicit Soak(quint32 seed)
        : m_random(seed)
        , m_chassis(program(u"zirvo-chassis-sim"_s),
                    { u"--device-dir"_s, m_folder.path(), u"--boot-seconds"_s, u"0"_s, u"--report-hz"_s, u"50"_s })
    {
        (void)m_chassis.nextLine();
        qputenv("ZIRVO_DEVICE_DIR", m_folder.path().toLocal8Bit());
        qputenv("ZIRVO_STARTUP_SECONDS", "0");
        qputenv("QT_LOGGING_RULES", "zirvo.health=true");
        m_panel.setStandardErrorFile(m_folder.filePath(u"log"_s));
        m_panel.start(program(u"zirvo-frontpanel"_s), { u"RACK-7"_s });
    }
    ~Soak()
    {
        m_panel.terminate();
        m_panel.waitForFinished();
    }

    /// Whether a client gets an answer; it tries for a while.
    [[nodiscard]] bool answers()
    {
        return waitUntil([this] { return client({ u"get"_s, u"R1:FREQ"_s, u"SP1:SPAN"_s }) == 0; }, 30'000);
    }
    [[nodiscard]] bool isRunning() const { return m_panel.state() == QProcess::Running; }

    /// Puts everything right: cables in, faults off, eye outputs and spectra on.
    void settle()
    {
        for (const QByteArray line :
             { "plug all", "refuse off", "silent off", "delay 0", "set D1 DSDM 2", "set D2 DSDM 2", "set D3 DSDM 1" })
            order(line);
    }

    void act()
    {
        const int choice = m_random.bounded(1000);
        if (choice < 550)
            operate({ u"mousemove"_s, number(0, 1270), number(0, 768), u"click"_s, u"1"_s });
        else if (choice < 900)
            operate({ u"key"_s, pick({ "Tab", "Tab", "Up", "Down", "Return", "Escape", "Escape", "2", "5", "period",
                                       "BackSpace", "space", "Page_Up", "Delete" }) });
        else if (choice < 930)
            operate({ u"key"_s, u"ctrl+a"_s, u"type"_s, u"2%1.5"_s.arg(number(200, 300)) });
        else if (choice < 960)
            client({ u"dump"_s, m_folder.filePath(u"dump"_s) });
        else if (choice < 975)
            client({ u"watch"_s, u"--for"_s, u"2"_s });
        else
            trouble();
    }

    [[nodiscard]] Health health() const
    {
        Health health;
        const QString proc = u"/proc/%1/"_s.arg(m_panel.processId());
        health.rssKib = read(proc + u"statm"_s).split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE) / 1024;
        health.descriptors = QDir(proc + u"fd"_s).entryList(QDir::NoDotAndDotDot | QDir::System | QDir::Files).size();
        const QByteArrayList times = read(proc + u"stat"_s).split(' ');
        health.cpuSeconds =
            double(times.value(13).toLongLong() + times.value(14).toLongLong()) / double(::sysconf(_SC_CLK_TCK));
        const QByteArray log = read(m_folder.filePath(u"log"_s));
        const qsizetype last = log.lastIndexOf("zirvo.health: ");
        health.told = last < 0 ? QByteArray() : log.mid(last + 14).split('\n').value(0);
        return health;
    }
    [[nodiscard]] quint32 random(quint32 bound) { return m_random.bounded(bound); }

private:
    static QString program(const QString &name) { return QStringLiteral(ZIRVO_BIN_DIR "/") + name; }
    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QString number(int lowest, int highest) { return QString::number(m_random.bounded(lowest, highest + 1)); }
    QString pick(const QByteArrayList &choices)
    {
        return QString::fromLatin1(choices[m_random.bounded(choices.size())]);
    }

    void order(const QByteArray &line)
    {
        m_chassis.write(line + '\n');
        (void)m_chassis.nextLine();
    }
    void operate(const QStringList &arguments) { (void)m_screen.operate(arguments); }
    int client(const QStringList &arguments)
    {
        QProcess process;
        process.start(program(u"zirvo-remote"_s), QStringList{ u"--quiet"_s } + arguments);
        process.waitForFinished();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    /// Something goes wrong on the links, and is put right a moment later.
    void trouble()
    {
        const QString link = pick({ "command", "eye", "spectral", "remote", "status", "all" });
        const QByteArray unplug = "unplug " + link.toLatin1();
        const QByteArray what = pick({ "unplug", "power-cycle 1", "refuse R1 5", "silent C1 2", "flood 4000 2",
                                       "reconfigure", "garble 5", "delay 300", "set U0 SLAVE 1" })
                                    .toLatin1();
        order(what == "unplug" ? unplug : what);
        (void)waitUntil([] { return false; }, m_random.bounded(3000));
        settle();
    }

    QRandomGenerator m_random;
    QTemporaryDir m_folder;
    Screen m_screen;
    Program m_chassis;
    QProcess m_panel;
};

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int minutes = argc > 1 ? QByteArray(argv[1]).toInt() : 60;
    const quint32 seed = argc > 2 ? QByteArray(argv[2]).toUInt() : 1;
    QTextStream out(stdout);
    Soak soak(seed);
    if (!soak.answers()) {
        out << "FAILED: the front panel does not start\n";
        return 1;
    }
    out << "seed " << seed << ", " << minutes << " minutes\n"
        << "minute   rss KiB  descriptors  cpu %  program's own counts\n";
    Health settled;
    Health before;
    quint64 actions = 0;
    for (int minute = 1; minute <= minutes && soak.isRunning(); ++minute) {
        for (const QDeadlineTimer deadline(60'000); !deadline.hasExpired() && soak.isRunning(); ++actions) {
            soak.act();
            (void)waitUntil([] { return false; }, kActionMs);
        }
        const Health now = soak.health();
        out << qSetFieldWidth(6) << minute << qSetFieldWidth(10) << now.rssKib << qSetFieldWidth(13) << now.descriptors
            << qSetFieldWidth(7) << qRound((now.cpuSeconds - before.cpuSeconds) / 0.6) << qSetFieldWidth(0) << "  "
            << now.told << Qt::endl;
        before = now;
        if (minute == qMin(kSettledMinute, minutes))
            settled = now;
    }

    soak.settle();
    const bool runs = soak.isRunning() && soak.answers();
    (void)waitUntil([] { return false; }, 15'000); // until the program has told once more
    const Health end = soak.health();
    const qint64 growth = end.rssKib - settled.rssKib;
    const bool isBounded = growth <= kMaxGrowthKib && end.descriptors <= settled.descriptors &&
                           end.count("waiting") <= kMaxWaiting && end.count("to-client") <= kMaxToClient;
    out << actions << " actions; since minute " << qMin(kSettledMinute, minutes) << ": " << growth << " KiB, "
        << end.descriptors - settled.descriptors << " descriptors; " << end.told << '\n'
        << (runs && isBounded ? "PASSED"
            : runs            ? "FAILED: it grows"
                              : "FAILED: it does not answer")
        << Qt::endl;
    return runs && isBounded ? 0 : 1;
}
