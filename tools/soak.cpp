#include "support/ClientView.h"
#include "support/SimulatedChassis.h"
#include "tools/HealthWatch.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

constexpr int kSettledMinute = 10; // growth is counted from here
constexpr int kActionMs = 100;
constexpr int kFlowMs = 60'000; // a chassis that was off is noticed, and all its settings are read again
constexpr int kAgreeMs = 10'000;
constexpr int kLookSeconds = 2;

// Values that a watching client gets, and the least count of each. The line to it carries a second's eye blocks in
// about as much time.
struct Told
{
    const char *key;
    qsizetype least;
};
constexpr Told kTold[] = {
    { "SP1:RFFT", 4 }, { "SP2:RFFT", 4 }, { "SP3:RFFT", 4 }, { "D1:EYEP", 2 }, { "R1:SSLV", 4 }
};

/// The front panel under a simulated chassis with ten times the usual traffic, an operator who does anything, a client
/// that comes and goes, and cables that are pulled; all of it from one seed.
class Soak
{
public:
    explicit Soak(quint32 seed) : m_random(seed), m_watch(m_panel, m_chassis.path(u"log"_s))
    {
        qputenv("QT_LOGGING_RULES", "zirvo.health=true");
        m_panel.setStandardErrorFile(m_chassis.path(u"log"_s));
        m_panel.start(program(u"zirvo-frontpanel"_s), { u"RACK-7"_s });
    }
    ~Soak()
    {
        m_panel.terminate();
        m_panel.waitForFinished();
    }

    /// What has gone wrong so far; empty if nothing has.
    [[nodiscard]] QString fault()
    {
        m_watch.follow();
        return m_fault.isEmpty() ? m_watch.faultNow() : m_fault;
    }
    [[nodiscard]] HealthWatch &watch() { return m_watch; }

    /// Whether a client gets an answer; it tries for a while.
    [[nodiscard]] bool answers()
    {
        return waitUntil([this] { return client({ u"get"_s, u"R1:FREQ"_s, u"SP1:SPAN"_s }).exitCode == 0; }, 30'000);
    }

    /// Notes what a client knows before anything has happened.
    void takeView() { m_view = ClientView::read(m_chassis); }

    /// Values served to a client that differ from the chassis, after all faults are over; tries for a while.
    [[nodiscard]] QString untrue() { return ClientView::differencesAfter(kAgreeMs, m_chassis, m_view).join(u", "_s); }

    /// A minute of anything; less if something goes wrong. Returns the number of actions.
    int actForAMinute()
    {
        int actions = 0;
        for (const QDeadlineTimer deadline(60'000); !deadline.hasExpired() && fault().isEmpty(); ++actions) {
            act();
            pause(kActionMs);
        }
        return actions;
    }

    /// Flows that a client which turns the spectra on does not get; tries for a while.
    [[nodiscard]] QString untold()
    {
        settle(); // only once: each order is reported, and the head is to notice missing reports
        QString missing;
        (void)waitUntil([this, &missing] { return (missing = look()).isEmpty() || !fault().isEmpty(); }, kFlowMs);
        return missing;
    }

    /// Puts everything right, closes what the operator has opened, and waits until the program has logged some quiet
    /// seconds.
    [[nodiscard]] HealthWatch::Counts rest()
    {
        settle();
        for (int i = 0; i < 10; ++i)
            operate({ u"key"_s, u"Escape"_s });
        const int lines = m_watch.lines();
        (void)waitUntil([this, lines] { return !fault().isEmpty() || m_watch.lines() > lines + 2; }, 30'000);
        return m_watch.counts();
    }

private:
    static QString program(const QString &name) { return QStringLiteral(ZIRVO_BIN_DIR "/") + name; }
    static void pause(int ms)
    {
        (void)waitUntil([] { return false; }, ms);
    }
    QString number(int lowest, int highest) { return QString::number(m_random.bounded(lowest, highest + 1)); }
    QString pick(const QByteArrayList &choices)
    {
        return QString::fromLatin1(choices[m_random.bounded(choices.size())]);
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
        else if (choice < 950)
            (void)client({ u"dump"_s, m_chassis.path(u"dump"_s) });
        else if (choice < 960)
            turnSpectraOn();
        else if (choice < 975)
            (void)client({ u"watch"_s, u"--for"_s, u"2"_s });
        else
            trouble();
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
        pause(m_random.bounded(3000));
        settle();
    }

    /// Puts everything right: cables in, faults off, eye outputs on.
    void settle()
    {
        for (const QByteArray line :
             { "plug all", "refuse off", "silent off", "delay 0", "set D1 DSDM 2", "set D2 DSDM 2", "set D3 DSDM 1" })
            order(line);
    }

    /// A spectral card that was without power sends none.
    void turnSpectraOn()
    {
        for (const QString &channel : { u"SP1"_s, u"SP2"_s, u"SP3"_s })
            (void)client({ u"set"_s, u"--no-confirm"_s, channel + u":DATA"_s, u"1"_s });
    }

    QString look()
    {
        turnSpectraOn();
        const QByteArray told = client({ u"watch"_s, u"--for"_s, QString::number(kLookSeconds) }).output;
        QStringList missing;
        for (const auto &[key, least] : kTold) {
            if (const qsizetype count = told.count(' ' + QByteArray(key) + ' '); count < least)
                missing +=
                    u"the client is told %1 %2 times (at least %3)"_s.arg(QLatin1StringView(key)).arg(count).arg(least);
        }
        return missing.join(u", "_s);
    }

    /// Sends a command to the simulator. A command that fails would make the result of the run worthless.
    void order(const QByteArray &line)
    {
        const QByteArray answer = m_chassis.order(line);
        const bool isDone = answer.startsWith("ok") || answer == "error: the chassis is busy"; // with a preset
        if (!isDone && m_fault.isEmpty())
            m_fault = u"the simulator does not \"%1\": %2"_s.arg(QLatin1StringView(line), QLatin1StringView(answer));
    }
    void operate(const QStringList &arguments) { (void)m_screen.operate(arguments); }
    SimulatedChassis::Outcome client(const QStringList &arguments) const { return m_chassis.client(arguments); }

    QRandomGenerator m_random;
    Screen m_screen;
    SimulatedChassis m_chassis{ { u"--report-hz"_s, u"50"_s }, SimulatedChassis::Record::None };
    QProcess m_panel;
    HealthWatch m_watch;
    ClientView m_view;
    QString m_fault;
};

/// Runs for @p minutes, at most until something goes wrong, and reports the outcome.
QString run(Soak &soak, int minutes, QTextStream &out)
{
    if (!soak.answers())
        return u"the front panel does not start"_s;
    soak.takeView();
    out << "minute   rss KiB  descriptors  cpu %  program's own counts" << Qt::endl;
    HealthWatch::Counts settled;
    qint64 cpuBefore = 0;
    quint64 actions = 0;
    QString fault = soak.fault();
    for (int minute = 1; minute <= minutes && fault.isEmpty(); ++minute) {
        actions += quint64(soak.actForAMinute());
        const HealthWatch::Counts now = soak.watch().counts();
        out << qSetFieldWidth(6) << minute << qSetFieldWidth(10) << now["rss-kib"] << qSetFieldWidth(13)
            << now["descriptors"] << qSetFieldWidth(7) << (now["cpu-ms"] - cpuBefore) / 600 << qSetFieldWidth(0) << "  "
            << soak.watch().lastLine() << Qt::endl;
        cpuBefore = now["cpu-ms"];
        fault = soak.fault();
        if (fault.isEmpty())
            fault = soak.watch().faultOfMinute();
        if (fault.isEmpty())
            fault = soak.untold();
        if (minute == kSettledMinute && fault.isEmpty())
            settled = soak.rest();
    }
    if (!fault.isEmpty())
        return fault;

    const HealthWatch::Counts end = soak.rest();
    out << actions << " actions; at rest: " << end["rss-kib"] << " KiB, " << end["descriptors"] << " descriptors, "
        << soak.watch().lastLine() << '\n';
    fault = soak.fault();
    if (fault.isEmpty() && !soak.answers())
        fault = u"the front panel does not answer"_s;
    if (fault.isEmpty())
        fault = soak.untrue();
    if (fault.isEmpty())
        fault = HealthWatch::faultAtRest(end);
    return fault.isEmpty() && minutes > kSettledMinute ? HealthWatch::growth(settled, end) : fault;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int minutes = argc > 1 ? QByteArray(argv[1]).toInt() : 60;
    const quint32 seed = argc > 2 ? QByteArray(argv[2]).toUInt() : 1;
    QTextStream out(stdout);
    out << "seed " << seed << ", " << minutes << " minutes" << Qt::endl;
    Soak soak(seed);
    const QString fault = run(soak, minutes, out);
    if (!fault.isEmpty())
        out << "FAILED: " << fault.trimmed() << Qt::endl;
    else if (minutes <= kSettledMinute)
        out << "PASSED but for growth, which only a run of more than " << kSettledMinute << " minutes shows"
            << Qt::endl;
    else
        out << "PASSED" << Qt::endl;
    return fault.isEmpty() ? 0 : 1;
}
