#pragma once

#include <QElapsedTimer>

#include <functional>

class QObject;

namespace remote {

/// The time that passes in a replay.
class Pace
{
public:
    void start() { m_clock.start(); }
    /// Calls @p handler from the event loop when @p dueMs have passed since the start, while @p context is there.
    void await(qint64 dueMs, const QObject *context, const std::function<void()> &handler) const;

private:
    QElapsedTimer m_clock;
};

} // namespace remote
