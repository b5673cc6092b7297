#pragma once

#include <QtGlobal>

#include <functional>

/// Milliseconds since some moment; never runs backwards. Tests inject their own.
using Clock = std::function<qint64()>;
