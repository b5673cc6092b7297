#pragma once

#include "simulator/radio/IfSignal.h"
#include "simulator/radio/Noise.h"

#include <optional>

namespace sim {

struct DemodulationMode;

/// The signal processing of a demodulator: the state of its loops for given controls and a given carrier.
class Demodulator
{
public:
    struct Controls
    {
        const DemodulationMode *mode = nullptr;
        double rate = 0;       ///< bits a second
        double sweepRange = 0; ///< kHz to either side in which the carrier loop finds a carrier
        double index = 0;      ///< of frequency modulation; 0: measured by the card
    };

    explicit Demodulator(quint32 seed) : m_noise(seed) {}

    void setControls(const Controls &controls) { m_controls = controls; }
    void step(const std::optional<IfSignal> &input, double seconds);

    [[nodiscard]] const DemodulationMode *mode() const { return m_controls.mode; }
    [[nodiscard]] double rate() const { return m_controls.rate; }
    [[nodiscard]] bool hasInput() const { return m_hasInput; }
    [[nodiscard]] bool isLocked() const;
    [[nodiscard]] bool isBitSyncLocked() const;
    /// Energy a bit over the noise density, dB; far below 0 without a carrier.
    [[nodiscard]] double bitEnergy() const { return m_bitEnergy; }
    /// Probability of a wrong bit.
    [[nodiscard]] double errorRate() const;
    /// kHz; wanders without lock.
    [[nodiscard]] double offset() const { return m_offset; }
    /// Hz; 0 in modes without frequency modulation, noise without lock.
    [[nodiscard]] double deviation() const { return m_deviation; }
    /// Video level for full gain, as a part of 1; noise without lock.
    [[nodiscard]] double videoLevel() const { return m_videoLevel; }

private:
    [[nodiscard]] bool fits(const IfSignal &input) const;
    void stepReadings(const std::optional<IfSignal> &input, double seconds);

    Controls m_controls;
    Noise m_noise;
    bool m_hasInput = false;
    double m_fittingSeconds = 0;
    double m_bitEnergy = 0;
    double m_wander = 0;
    double m_offset = 0;
    double m_deviation = 0;
    double m_videoLevel = 0;
};

} // namespace sim
