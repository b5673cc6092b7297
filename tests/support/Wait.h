#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

/// Runs the event loop until @p condition holds, and returns whether it did within the bound. Unlike QTest::qWaitFor
/// it does not sleep between passes, so a conversation of a hundred frames takes milliseconds.
template <typename Condition>
[[nodiscard]] bool waitUntil(Condition condition, int timeOutMs = 5000)
{
    const QDeadlineTimer deadline(timeOutMs);
    QTimer wakeUp;
    wakeUp.start(20);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}
