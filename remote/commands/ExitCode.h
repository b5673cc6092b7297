#pragma once

#include "remote/files/OutputFile.h"

/// The exit codes of the program.
namespace remote::ExitCode {

inline constexpr int Fine = 0;
inline constexpr int Refused = 1;
inline constexpr int NoAnswer = 2; ///< or a link that will not open or was lost, or output that nobody took
inline constexpr int Usage = 64;   ///< or a file that cannot be used

[[nodiscard]] constexpr int of(OutputFile::Fault fault)
{
    return fault == OutputFile::Fault::NotTaken ? NoAnswer : Usage;
}

} // namespace remote::ExitCode
