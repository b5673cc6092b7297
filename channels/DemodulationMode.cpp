#include "channels/DemodulationMode.h"

#include "channels/DmdChan.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

using C = DmdChan::Commands;
using M = DemodulationMode;

constexpr double kLowest = 100;

constexpr auto kOneOutput = M::DataRateB | M::AnalogB | M::DigitalAnalogA;
constexpr auto kVideo = M::FreqOffset | M::DataRateB | M::AnalogB | M::DemodLamp | M::BitSyncLamp | M::AutoSweepRange |
                        M::AutoStepSize | M::AutoModIndex;
constexpr auto kFm = kVideo | M::DigitalAnalogA;
constexpr auto kTrellis = kOneOutput | M::FreqOffset | M::AutoBW | M::AutoSweepRange | M::AutoStepSize;
constexpr auto kPhase = kOneOutput | M::PeakDev | M::AutoModIndex;
constexpr auto kTwoSignals = M::PeakDev | M::AutoModIndex | M::DigitalAnalogA | M::DigitalAnalogB;
constexpr auto kOneOfTwo = kTwoSignals | M::DataRateB;
constexpr auto kMultiH = kPhase | M::AutoBW | M::AutoSweepRange | M::AutoStepSize;

constexpr std::array kPcmFmSettings{ C::LBWC, C::SWRG, C::SWRT, C::BSIL, C::TMID, C::TRKD };
constexpr std::array kTrellisSettings{ C::LBWB, C::LBWC, C::SWRG, C::SWRT, C::BSIL, C::DAFC };
constexpr std::array kMultiHSettings{ C::LBWB, C::LBWC, C::SWRG, C::SWRT, C::BSIL, C::DFAQ, C::DAFC };
constexpr std::array kBandwidths{ C::LBWB, C::LBWC, C::TRKD };
constexpr std::array kBitSyncBandwidth{ C::LBWB };
constexpr std::array kSweepRange{ C::SWRG };
constexpr std::array kSweepRate{ C::SWRT };
constexpr std::array kDivider{ C::TRKD };

constexpr M::Locks kPcmFmLocks{ .always = kPcmFmSettings, .withAutoBandwidth = kBitSyncBandwidth };
constexpr M::Locks kTrellisLocks{ .always = kTrellisSettings, .withManualIndex = kDivider };
constexpr M::Locks kMultiHLocks{ .always = kMultiHSettings };
constexpr M::Locks kAutomaticLocks{
    .always = {}, .withAutoBandwidth = kBandwidths, .withAutoSweepRange = kSweepRange, .withAutoSweepRate = kSweepRate
};

constexpr auto kTo20 = "Valid Range: 100Hz to 20MHz"_L1;
constexpr auto kTo22 = "Valid Range: 100Hz to 22MHz"_L1;
constexpr auto kTo37 = "Valid Range: 100Hz to 37MHz"_L1;
constexpr auto kTo40 = "Valid Range: 100Hz to 40MHz"_L1;

constexpr std::array kModes{
    M{ "0"_L1, "PCM-FM"_L1, kLowest, 22e6, kTo22, kFm, kPcmFmLocks },
    M{ "1"_L1, "TRELLIS FM"_L1, kLowest, 22e6, kTo22, kTrellis, kTrellisLocks },
    M{ "2"_L1, "PM"_L1, kLowest, 20e6, kTo20, kPhase, kAutomaticLocks },
    M{ "3"_L1, "BPSK"_L1, kLowest, 20e6, kTo20, kPhase, kAutomaticLocks },
    M{ "4"_L1, "QPSK"_L1, kLowest, 40e6, kTo40, kOneOfTwo, kAutomaticLocks },
    M{ "5"_L1, "UQPSK"_L1, kLowest, 40e6, kTo40, kOneOfTwo, kAutomaticLocks },
    M{ "6"_L1, "AQPSK"_L1, kLowest, 20e6, kTo20, kTwoSignals, kAutomaticLocks },
    M{ "7"_L1, "AUQPSK"_L1, kLowest, 20e6, kTo20, kTwoSignals, kAutomaticLocks },
    M{ "8"_L1, "SOQPSK"_L1, kLowest, 40e6, kTo40, kPhase, kAutomaticLocks },
    M{ "9"_L1, "MULTI-H CPM"_L1, kLowest, 37e6, kTo37, kMultiH, kMultiHLocks },
    M{ "10"_L1, "OQPSK"_L1, kLowest, 40e6, kTo40, kPhase, kAutomaticLocks },
    M{ "13"_L1, "FM"_L1, kLowest, 22e6, kTo22, kFm, kAutomaticLocks },
    M{ "17"_L1, "NTSC-Video"_L1, 14e6, 14e6, "Valid Range: 14MHz"_L1, kVideo, kAutomaticLocks },
};

/// Advanced settings that an output configuration does not use, by value of VCFG.
constexpr std::array kAnalogSettings{ C::VIDP, C::VCP1, C::VDE1 };
constexpr std::array kDigitalSettings{ C::BSDP, C::BSCP };

M::Mnemonics lockedByOutput(const QString &VCFG)
{
    if (VCFG == "0"_L1)
        return kDigitalSettings;
    return VCFG == "1"_L1 ? M::Mnemonics(kAnalogSettings) : M::Mnemonics();
}

const M *find(QLatin1StringView M::*field, const QString &text)
{
    const auto mode = std::ranges::find_if(kModes, [&](const M &m) { return text == m.*field; });
    return mode != kModes.end() ? &*mode : nullptr;
}

bool isOn(const QString &value) { return value == "1"_L1; }

/// The card writes it with two decimals.
bool isZero(const QString &TMID)
{
    bool isNumber = false;
    return TMID.toDouble(&isNumber) == 0.0 && isNumber;
}

} // namespace

const DemodulationMode *DemodulationMode::withCode(const QString &code) { return find(&DemodulationMode::code, code); }

const DemodulationMode *DemodulationMode::withName(const QString &name) { return find(&DemodulationMode::name, name); }

const DemodulationMode &DemodulationMode::fallback() { return kModes.front(); }

QStringList DemodulationMode::lockedSettings(const DmdChan &demodulator)
{
    QStringList locked;
    const auto lock = [&locked](Mnemonics mnemonics, bool applies = true) {
        if (applies)
            locked.append({ mnemonics.begin(), mnemonics.end() });
    };
    lock(lockedByOutput(demodulator.getVCFG()));
    if (const DemodulationMode *const mode = withCode(demodulator.getDMOD())) {
        lock(mode->locks.always);
        lock(mode->locks.withAutoBandwidth, isOn(demodulator.getALBW()));
        lock(mode->locks.withAutoSweepRange, isOn(demodulator.getASRG()));
        lock(mode->locks.withAutoSweepRate, isOn(demodulator.getASRT()));
        lock(mode->locks.withManualIndex, !isZero(demodulator.getTMID()));
    }
    return locked;
}

bool DemodulationMode::hasAutomaticSweepRange(const DmdChan &demodulator)
{
    const DemodulationMode *const mode = withCode(demodulator.getDMOD());
    return mode && !mode->locks.withAutoSweepRange.empty() && isOn(demodulator.getASRG());
}
