#include "simulator/links/PacedWriter.h"

#include <algorithm>

namespace sim {

namespace {
constexpr qint64 kNanosecondsPerSecond = 1'000'000'000;
constexpr int kStepMs = 1;
constexpr int kBlockedMs = 10;
} // namespace

PacedWriter::PacedWriter(Sink sink, QObject *parent) : QObject(parent), m_sink(std::move(sink))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &PacedWriter::letOut);
}

bool PacedWriter::write(const QByteArray &bytes)
{
    if (m_buffer.size() + bytes.size() > kBufferSize)
        return false;
    if (m_buffer.isEmpty()) {
        startBurst();
        m_timer.start(kStepMs);
    }
    m_buffer.append(bytes);
    return true;
}

void PacedWriter::clear()
{
    m_buffer.clear();
    m_timer.stop();
}

void PacedWriter::startBurst()
{
    m_burst.start();
    m_burstBytes = 0;
}

void PacedWriter::letOut()
{
    const qint64 clockedOut = m_burst.nsecsElapsed() * kBytesPerSecond / kNanosecondsPerSecond;
    const qsizetype due = std::min<qint64>(clockedOut - m_burstBytes, m_buffer.size());
    const qsizetype taken = due > 0 ? m_sink(QByteArrayView(m_buffer).first(due)) : 0;
    m_buffer.remove(0, taken);
    m_burstBytes += taken;
    const bool blocked = taken < due;
    // Time spent blocked by a client that does not read must not be made up above line speed.
    if (blocked)
        startBurst();
    if (!m_buffer.isEmpty())
        m_timer.start(blocked ? kBlockedMs : kStepMs);
}

} // namespace sim
