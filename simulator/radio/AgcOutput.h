#pragma once

namespace sim::AgcOutput {

inline constexpr double kReference = -120; ///< dBm at 0 V

/// Millivolts at an analogue AGC output for a level (dBm) above a reference (dBm). `slope` is the position of the
/// slope in the list 50, 20, 10 dB/V; the larger ones have a lower full scale.
[[nodiscard]] int millivolts(double level, double reference, int slope, bool negative);

} // namespace sim::AgcOutput
