#pragma once

#include <QString>

/// The data source of a demodulator is set and reported on the system address, by a mnemonic for each demodulator.
namespace DataSource {

/// @param demodulator its number, "1" to "3"
/// @return "SDM1" to "SDM3"; empty for any other number
[[nodiscard]] QString mnemonicOf(const QString &demodulator);

/// @return address of the demodulator, "D1" to "D3"; empty if @p mnemonic is not about a data source
[[nodiscard]] QString addressOf(const QString &mnemonic);

} // namespace DataSource
