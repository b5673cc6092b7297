#include "simulator/units/DemodulatorFilters.h"

#include "simulator/units/SettingRow.h"

#include <QByteArrayList>

#include <algorithm>
#include <array>
#include <span>

namespace sim {

namespace {

/// Bandwidths in Hz before decimation; each step of it divides them by eight.
constexpr std::array<int, 4> kIf{ 40'000'000, 20'000'000, 10'000'000, 5'000'000 };
constexpr std::array<int, 5> kVideo{ 20'000'000, 10'000'000, 5'000'000, 2'500'000, 1'250'000 };

QByteArray list(std::span<const int> bandwidths, int decimation)
{
    QByteArrayList texts;
    for (const int bandwidth : bandwidths)
        texts.append(QByteArray::number(bandwidth >> (3 * decimation)));
    return texts.join(',');
}

bool isPosition(const QByteArray &value, std::span<const int> bandwidths)
{
    const int position = readIndex(value);
    return position >= 0 && position < int(bandwidths.size());
}

} // namespace

int DemodulatorFilters::decimation(double rate)
{
    constexpr std::array<double, 3> kHighestRates{ 30e3, 250e3, 2e6 };
    return int(std::count_if(kHighestRates.begin(), kHighestRates.end(), [rate](double r) { return rate <= r; }));
}

QByteArray DemodulatorFilters::ifFilters(int decimation) { return list(kIf, decimation); }

QByteArray DemodulatorFilters::videoFilters(int decimation) { return list(kVideo, decimation); }

bool DemodulatorFilters::isIfFilter(const QByteArray &value) { return isPosition(value, kIf); }

bool DemodulatorFilters::isVideoFilter(const QByteArray &value) { return isPosition(value, kVideo); }

} // namespace sim
