#pragma once

/// What the program ends with.
namespace ExitCode {
inline constexpr int Fine = 0;
inline constexpr int Refused = 1;
inline constexpr int NoAnswer = 2; ///< or a link that will not open or was lost, or output that nobody took
inline constexpr int Usage = 64;   ///< or a file that cannot be used
} // namespace ExitCode
