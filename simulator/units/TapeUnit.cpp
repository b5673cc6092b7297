#include "simulator/units/TapeUnit.h"

#include "simulator/radio/DemodulationMode.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sim {

namespace {

constexpr double kFullGain = 255;
constexpr double kFullLevel = -40;    // dBm at full gain
constexpr double kTapeNoise = -160;   // dBm in 1 Hz, far above a receiver's own
constexpr double kRecordedRate = 1e6; // bits a second
constexpr double kLowestFrequency = 1e4;
constexpr double kHighestFrequency = 7e7; // Hz

constexpr auto kRows = std::to_array<SettingRow>({
    { "NAME", Check::Text, "Tape", Stored },
    { "SLAVE", Check::ReadOnly, "0", Volatile },
    { "TFREQ", Check::Index, "10500000", Stored, kLowestFrequency, kHighestFrequency },
    { "TGAINCH1", Check::Index, "128", Stored, 0, kFullGain },
    { "TGAINCH2", Check::Index, "128", Stored, 0, kFullGain },
    { "TGAINCMB", Check::Index, "128", Stored, 0, kFullGain },
});

} // namespace

TapeUnit::TapeUnit(QObject *parent) : ChannelUnit("T1", kRows, {}, parent) {}

Tuner::Playback TapeUnit::playback(int number) const
{
    const int gain = std::max(1, readIndex(value("TGAINCH" + QByteArray::number(number))));
    const double level = kFullLevel + 20 * std::log10(gain / kFullGain);
    const int mode = DemodulationMode::named(u"PCM-FM")->code;
    return { level, IfSignal{ .offset = 0, .noiseDistance = level - kTapeNoise, .mode = mode, .rate = kRecordedRate } };
}

} // namespace sim
