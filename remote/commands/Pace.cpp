#include "remote/commands/Pace.h"

#include <QTimer>

#include <algorithm>
#include <chrono>

namespace remote {

namespace {

constexpr qint64 kLongestTimerMs = qint64(24) * 60 * 60 * 1000;

} // namespace

void Pace::await(qint64 dueMs, const QObject *context, const std::function<void()> &handler) const
{
    const qint64 wait = std::clamp<qint64>(dueMs - m_clock.elapsed(), 0, kLongestTimerMs);
    QTimer::singleShot(std::chrono::milliseconds(wait), context, [this, dueMs, context, handler] {
        if (m_clock.elapsed() < dueMs)
            await(dueMs, context, handler);
        else
            handler();
    });
}

} // namespace remote
