#include "tools/HealthWatch.h"

#include <QDir>
#include <QProcess>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView kCategory = "zirvo.health: ";
constexpr int kOldMs = 10'000; // the program logs every five seconds

struct Bound
{
    const char *count;
    qint64 value;
};

// The most of each, with nothing going on but the chassis' reports. What waits for the client may be about as much as
// there are values.
constexpr Bound kAtRest[] = { { "waiting", 50 }, { "to-client", 800 }, { "unwritten", 16 * 1024 } };

// How much more of each is no growth. Windows that the operator has left open are objects; timer events come with
// every message to the client.
constexpr Bound kGrowth[] = {
    { "rss-kib", 2048 }, { "heap-kib", 1024 }, { "descriptors", 2 }, { "objects", 1000 }, { "timer-events", 5000 }
};

// The least of each in five seconds that are live, and how much of a minute has to be: cables are pulled and power is
// cut several times in it, which the head has to notice each time. A flood of reports lasts for less.
constexpr Bound kFlows[] = { { "reports", 500 }, { "moved", 1 } };
constexpr int kLivePercent = 20;

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString tooMuch(const Bound &bound, qint64 value, const QString &what)
{
    return value <= bound.value
               ? QString()
               : u"%1 %2 (%3, at most %4) "_s.arg(QLatin1StringView(bound.count), what).arg(value).arg(bound.value);
}

} // namespace

HealthWatch::HealthWatch(const QProcess &head, const QString &logPath) : m_head(head), m_log(logPath)
{
    m_lastTold.start();
}

void HealthWatch::follow()
{
    if (!m_log.isOpen() && !m_log.open(QIODevice::ReadOnly))
        return;
    m_unread += m_log.readAll();
    for (qsizetype end = m_unread.indexOf('\n'); end >= 0; end = m_unread.indexOf('\n')) {
        const QByteArray line = m_unread.first(end);
        m_unread.remove(0, end + 1);
        if (line.startsWith(kCategory))
            take(line.sliced(kCategory.size()));
    }
}

void HealthWatch::take(const QByteArray &line)
{
    m_lastTold.start();
    m_lastLine = line;
    ++m_lines;
    ++m_linesOfMinute;
    m_told.clear();
    for (const QByteArray &count : line.split(' '))
        m_told[count.left(count.indexOf('='))] = count.mid(count.indexOf('=') + 1).toLongLong();
    for (const auto &[flow, least] : kFlows)
        m_liveLines[flow] += m_told.value(flow) >= least;
}

HealthWatch::Counts HealthWatch::counts() const
{
    Counts counts = m_told;
    const QString proc = u"/proc/%1/"_s.arg(m_head.processId());
    counts["rss-kib"] = read(proc + u"statm"_s).split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE) / 1024;
    counts["descriptors"] = QDir(proc + u"fd"_s).entryList(QDir::NoDotAndDotDot | QDir::System | QDir::Files).size();
    const QByteArrayList times = read(proc + u"stat"_s).split(' ');
    counts["cpu-ms"] = (times.value(13).toLongLong() + times.value(14).toLongLong()) * 1000 / ::sysconf(_SC_CLK_TCK);
    return counts;
}

QString HealthWatch::faultNow() const
{
    if (m_head.state() != QProcess::Running)
        return u"the front panel has ended"_s;
    return m_lastTold.elapsed() > kOldMs ? u"the front panel has told no health for %1 s"_s.arg(kOldMs / 1000)
                                         : QString();
}

QString HealthWatch::faultOfMinute()
{
    QString fault;
    for (const auto &[flow, least] : kFlows) {
        const int live = m_liveLines.value(flow) * 100 / qMax(1, m_linesOfMinute);
        if (live < kLivePercent)
            fault +=
                u"%1 flow %2 % of the minute (at least %3) "_s.arg(QLatin1StringView(flow)).arg(live).arg(kLivePercent);
    }
    m_liveLines.clear();
    m_linesOfMinute = 0;
    return fault;
}

QString HealthWatch::faultAtRest(const Counts &counts)
{
    QString fault;
    for (const Bound &bound : kAtRest)
        fault += tooMuch(bound, counts.value(bound.count, bound.value + 1), u"pile up"_s);
    return fault;
}

QString HealthWatch::growth(const Counts &from, const Counts &to)
{
    QString fault;
    for (const Bound &bound : kGrowth)
        fault += tooMuch(bound, to.value(bound.count) - from.value(bound.count), u"grow"_s);
    return fault;
}
