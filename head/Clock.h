#pragma once

#include <QElapsedTimer>
#include <QtGlobal>

#include <functional>

/// Milliseconds since some moment; never runs backwards. Tests inject their own.
using Clock = std::function<qint64()>;

/// A clock that starts now.
[[nodiscard]] inline Clock startedClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}
