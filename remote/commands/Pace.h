#pragma once

#include <QtGlobal>

#include <functional>

class QObject;

namespace remote {

/// The clock of a replay.
class Pace
{
public:
    /// Milliseconds since any moment, never going back.
    using Clock = std::function<qint64()>;

    /// Runs on the system's clock.
    Pace();
    explicit Pace(Clock clock) : m_clock(std::move(clock)) {}

    void start() { m_start = m_clock(); }
    /// Calls @p handler from the event loop @p dueMs after the start, unless @p context is deleted before.
    void await(qint64 dueMs, const QObject *context, const std::function<void()> &handler) const;

private:
    Clock m_clock;
    qint64 m_start = 0;
};

} // namespace remote
