#pragma once

#include "simulator/units/SettingRow.h"

#include <span>

namespace sim {

namespace DemodulatorRows {

/// Every setting of a demodulator card. Older cards also offer three settings by name that newer cards have in
/// registers only.
[[nodiscard]] std::span<const SettingRow> all(bool olderCard);
/// Mnemonics of the status values.
[[nodiscard]] std::span<const std::string_view> reported();

} // namespace DemodulatorRows

} // namespace sim
