#include "frontpanel/DemodMode.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr double kLowest = 100;

using M = DemodMode;
constexpr auto kOneOutput = M::DataRateB | M::AnalogB | M::DigitalAnalogA;
constexpr auto kVideo = M::FreqOffset | M::DataRateB | M::AnalogB | M::DemodLamp | M::BitSyncLamp | M::AutoSweepRange |
                        M::AutoStepSize | M::AutoModIndex;
constexpr auto kFm = kVideo | M::DigitalAnalogA;
constexpr auto kTrellis = kOneOutput | M::FreqOffset | M::AutoBW | M::AutoSweepRange | M::AutoStepSize;
constexpr auto kPhase = kOneOutput | M::PeakDev | M::AutoModIndex;
constexpr auto kTwoSignals = M::PeakDev | M::AutoModIndex | M::DigitalAnalogA | M::DigitalAnalogB;
constexpr auto kOneOfTwo = kTwoSignals | M::DataRateB;
constexpr auto kMultiH = kPhase | M::AutoBW | M::AutoSweepRange | M::AutoStepSize;

constexpr std::array kModes{
    DemodMode{ "0"_L1, "PCM-FM"_L1, kLowest, 22e6, "Valid Range: 100Hz to 22MHz"_L1, kFm },
    DemodMode{ "1"_L1, "TRELLIS FM"_L1, kLowest, 22e6, "Valid Range: 100Hz to 22MHz"_L1, kTrellis },
    DemodMode{ "2"_L1, "PM"_L1, kLowest, 20e6, "Valid Range: 100Hz to 20MHz"_L1, kPhase },
    DemodMode{ "3"_L1, "BPSK"_L1, kLowest, 20e6, "Valid Range: 100Hz to 20MHz"_L1, kPhase },
    DemodMode{ "4"_L1, "QPSK"_L1, kLowest, 40e6, "Valid Range: 100Hz to 40MHz"_L1, kOneOfTwo },
    DemodMode{ "5"_L1, "UQPSK"_L1, kLowest, 40e6, "Valid Range: 100Hz to 40MHz"_L1, kOneOfTwo },
    DemodMode{ "6"_L1, "AQPSK"_L1, kLowest, 20e6, "Valid Range: 100Hz to 20MHz"_L1, kTwoSignals },
    DemodMode{ "7"_L1, "AUQPSK"_L1, kLowest, 20e6, "Valid Range: 100Hz to 20MHz"_L1, kTwoSignals },
    DemodMode{ "8"_L1, "SOQPSK"_L1, kLowest, 40e6, "Valid Range: 100Hz to 40MHz"_L1, kPhase },
    DemodMode{ "9"_L1, "MULTI-H CPM"_L1, kLowest, 37e6, "Valid Range: 100Hz to 37MHz"_L1, kMultiH },
    DemodMode{ "10"_L1, "OQPSK"_L1, kLowest, 40e6, "Valid Range: 100Hz to 40MHz"_L1, kPhase },
    DemodMode{ "13"_L1, "FM"_L1, kLowest, 22e6, "Valid Range: 100Hz to 22MHz"_L1, kFm },
    DemodMode{ "17"_L1, "NTSC-Video"_L1, 14e6, 14e6, "Valid Range: 14MHz"_L1, kVideo },
};

const DemodMode *find(QLatin1StringView DemodMode::*field, const QString &text)
{
    const auto mode = std::find_if(kModes.begin(), kModes.end(), [&](const DemodMode &m) { return text == m.*field; });
    return mode != kModes.end() ? &*mode : nullptr;
}

} // namespace

const DemodMode *DemodMode::withCode(const QString &code) { return find(&DemodMode::code, code); }

const DemodMode *DemodMode::withName(const QString &name) { return find(&DemodMode::name, name); }

const DemodMode &DemodMode::fallback() { return kModes.front(); }
