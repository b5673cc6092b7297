#pragma once

#include <QByteArray>

/// The digital filters of a demodulator card. Decimation, 0 to 3, sets the bandwidths of all of them.
namespace sim::DemodulatorFilters {

/// The decimation that a card chooses for a bit rate: the widest filter stays well above twice the rate.
[[nodiscard]] int decimation(double rate);
/// Bandwidths in Hz, separated by commas.
[[nodiscard]] QByteArray ifFilters(int decimation);
[[nodiscard]] QByteArray videoFilters(int decimation);
/// Whether `value` is the position of a filter in its list.
[[nodiscard]] bool isIfFilter(const QByteArray &value);
[[nodiscard]] bool isVideoFilter(const QByteArray &value);

} // namespace sim::DemodulatorFilters
