#pragma once

#include <cmath>

namespace sim {

/// Simulated time passes in steps of this length.
inline constexpr int kStepMs = 20;
inline constexpr double kStepSeconds = kStepMs / 1000.0;
inline constexpr int kStepsPerSecond = 1000 / kStepMs;

[[nodiscard]] inline int stepsIn(double seconds) { return int(std::lround(seconds * kStepsPerSecond)); }

} // namespace sim
