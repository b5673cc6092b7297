#include "remote/commands/Pace.h"

#include <QTimer>

#include <algorithm>
#include <chrono>

namespace remote {

namespace {

constexpr qint64 kLongestTimerMs = qint64(24) * 60 * 60 * 1000;

} // namespace

Pace::Pace()
    : Pace([] {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        return qint64(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    })
{
}

void Pace::await(qint64 dueMs, const QObject *context, const std::function<void()> &handler) const
{
    const qint64 wait = std::clamp<qint64>(dueMs - (m_clock() - m_start), 0, kLongestTimerMs);
    QTimer::singleShot(std::chrono::milliseconds(wait), context, [this, dueMs, context, handler] {
        if (m_clock() - m_start < dueMs)
            await(dueMs, context, handler);
        else
            handler();
    });
}

} // namespace remote
