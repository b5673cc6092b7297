#include "simulator/radio/Demodulator.h"

#include "simulator/radio/DemodulationMode.h"

#include <algorithm>
#include <cmath>

namespace sim {

namespace {

constexpr double kWeakestLock = 6.0;    // dB bit energy
constexpr double kNoSignal = -30.0;     // dB bit energy
constexpr double kRateTolerance = 0.01; // of the rate set
constexpr double kLockSeconds = 0.2;    // until carrier lock
constexpr double kBitSyncSeconds = 0.5; // until bit sync
constexpr double kWanderSeconds = 0.5;  // correlation time of readings without lock
constexpr double kLostOffset = 40.0;    // kHz, standard deviation without lock
constexpr double kUsualIndex = 0.35;    // peak deviation over bit rate
constexpr double kLostDeviation = 1.5;  // of the locked reading, without lock
constexpr double kReadingNoise = 0.002; // of a locked reading

} // namespace

void Demodulator::step(const std::optional<IfSignal> &input, double seconds)
{
    m_hasInput = input.has_value();
    m_bitEnergy = input && m_controls.rate > 0 ? input->noiseDistance - 10 * std::log10(m_controls.rate) : kNoSignal;
    m_fittingSeconds = input && fits(*input) ? m_fittingSeconds + seconds : 0;
    stepReadings(input, seconds);
}

bool Demodulator::isLocked() const { return m_fittingSeconds >= kLockSeconds; }

bool Demodulator::isBitSyncLocked() const { return m_fittingSeconds >= kBitSyncSeconds; }

double Demodulator::errorRate() const { return 0.5 * std::erfc(std::sqrt(std::pow(10.0, m_bitEnergy / 10))); }

bool Demodulator::fits(const IfSignal &input) const
{
    const DemodulationMode *const mode = m_controls.mode;
    return mode && mode->code == input.mode &&
           std::abs(input.rate - m_controls.rate) <= kRateTolerance * m_controls.rate && m_bitEnergy >= kWeakestLock &&
           (!mode->isCoherent() || std::abs(input.offset) <= m_controls.sweepRange);
}

void Demodulator::stepReadings(const std::optional<IfSignal> &input, double seconds)
{
    // Drawn in every step, locked or not: the random stream must depend on the number of steps alone.
    const double noise = m_noise.gaussian();
    m_wander = Noise::wander(m_wander, noise, seconds, kWanderSeconds);
    const double index = m_controls.index > 0 ? m_controls.index : kUsualIndex;
    const double peak = m_controls.mode && !m_controls.mode->isCoherent() ? index * m_controls.rate : 0;
    const bool locked = isLocked();
    m_offset = locked ? input->offset : kLostOffset * m_wander;
    m_deviation = peak * (locked ? 1 + kReadingNoise * noise : kLostDeviation * std::abs(m_wander));
    m_videoLevel = locked ? 1 + kReadingNoise * noise : std::clamp(std::abs(m_wander) / 2, 0.0, 1.0);
}

} // namespace sim
