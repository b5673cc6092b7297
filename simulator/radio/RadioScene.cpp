#include "simulator/radio/RadioScene.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sim {

namespace {

constexpr double kThermalNoise = -174.0;  // dBm in 1 Hz
constexpr double kNoiseFigure = 4.0;      // dB
constexpr double kFadingSeconds = 4.0;    // correlation time
constexpr double kDriftSeconds = 90.0;    // period
constexpr double kRippleSeconds = 0.2;    // correlation time of the detector's noise
constexpr double kRipple = 0.25;          // dB
constexpr double kCarrierMargin = 6.0;    // dB over noise
constexpr double kOneHertz = 1e-6;        // MHz
constexpr double kSameSignal = 0.05;      // MHz
constexpr double kPolarisationLoss = 2.2; // dB, the second antenna feed sees this much less

double milliwatt(double dBm) { return std::pow(10.0, dBm / 10.0); }

double dBm(double milliwatts) { return 10.0 * std::log10(milliwatts); }

/// Share of a signal's occupied band that falls into the filter.
double share(double signalFrequency, double occupied, double frequency, double bandwidth)
{
    const double low = std::max(signalFrequency - occupied / 2, frequency - bandwidth / 2);
    const double high = std::min(signalFrequency + occupied / 2, frequency + bandwidth / 2);
    return std::clamp((high - low) / occupied, 0.0, 1.0);
}

} // namespace

double RadioScene::Emission::frequencyNow() const
{
    return signal.frequency + signal.drift / 1000.0 * std::sin(driftPhase);
}

double RadioScene::Emission::levelNow(int polarisation) const
{
    return signal.level - polarisation * kPolarisationLoss + signal.fading * fade.at(size_t(polarisation));
}

RadioScene::RadioScene(const QList<RadioSignal> &signalList, quint32 seed) : m_noise(seed)
{
    for (const RadioSignal &signal : signalList) {
        Emission emission{ signal, {}, m_noise.random().generateDouble() * 2 * std::numbers::pi };
        for (double &fade : emission.fade)
            fade = m_noise.gaussian();
        m_emissions.append(emission);
    }
}

void RadioScene::step(double seconds)
{
    for (Emission &emission : m_emissions) {
        emission.driftPhase =
            std::fmod(emission.driftPhase + seconds * 2 * std::numbers::pi / kDriftSeconds, 2 * std::numbers::pi);
        for (double &fade : emission.fade)
            fade = Noise::wander(fade, m_noise.gaussian(), seconds, kFadingSeconds);
    }
    for (double &ripple : m_noiseRipple)
        ripple = Noise::wander(ripple, m_noise.gaussian(), seconds, kRippleSeconds);
}

void RadioScene::setSignal(double frequency, double level)
{
    for (Emission &emission : m_emissions) {
        if (std::abs(emission.signal.frequency - frequency) <= kSameSignal) {
            emission.signal.level = level;
            return;
        }
    }
    m_emissions.append(Emission{ RadioSignal{ .frequency = frequency, .level = level }, {}, 0 });
}

double RadioScene::noise(double bandwidth, int polarisation) const
{
    return kThermalNoise + kNoiseFigure + dBm(bandwidth * 1e6) + kRipple * m_noiseRipple.at(size_t(polarisation));
}

double RadioScene::power(double frequency, double bandwidth, int polarisation) const
{
    double sum = milliwatt(noise(bandwidth, polarisation));
    for (const Emission &emission : m_emissions) {
        const double part = share(emission.frequencyNow(), emission.signal.bandwidth, frequency, bandwidth);
        sum += part * milliwatt(emission.levelNow(polarisation));
    }
    return dBm(sum);
}

std::optional<IfSignal> RadioScene::carrier(double frequency, double bandwidth, int polarisation) const
{
    std::optional<IfSignal> strongest;
    const double threshold = noise(bandwidth, polarisation) + kCarrierMargin;
    const double noiseDensity = noise(kOneHertz, polarisation);
    for (const Emission &emission : m_emissions) {
        const double offset = emission.frequencyNow() - frequency;
        const double level = emission.levelNow(polarisation);
        const double distance = level - noiseDensity;
        const bool found = std::abs(offset) <= bandwidth / 2 && level > threshold;
        if (found && (!strongest || distance > strongest->noiseDistance))
            strongest = IfSignal{ offset * 1000.0, distance, emission.signal.mode, emission.signal.rate };
    }
    return strongest;
}

} // namespace sim
