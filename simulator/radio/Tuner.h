#pragma once

#include "simulator/radio/IfSignal.h"

#include <optional>

namespace sim {

class RadioScene;

/// The analogue part of a receiver: the state of its detectors for given controls and a given scene.
class Tuner
{
public:
    struct Controls
    {
        double frequency = 0;    ///< MHz
        double bandwidth = 1;    ///< MHz, of the IF filter
        double agcSeconds = 0.1; ///< AGC time constant
        bool agcFrozen = false;
        double loopBandwidth = 0; ///< Hz of the AFC loop; 0 is manual tuning
        double manualOffset = 0;  ///< kHz, used with manual tuning
    };

    /// The signal that a tape plays in place of the antenna's.
    struct Playback
    {
        double level = 0; ///< dBm
        IfSignal carrier;
    };

    /// `polarisation` is the antenna feed, 0 or 1.
    explicit Tuner(int polarisation) : m_polarisation(polarisation) {}

    /// A new frequency unlocks the synthesizer for a while.
    void setControls(const Controls &controls);
    void step(const RadioScene &scene, const std::optional<Playback> &playback, double seconds);

    /// Input level in dBm, noise included.
    [[nodiscard]] double level() const { return m_level; }
    /// Level in dBm held by the AGC loop.
    [[nodiscard]] double agcLevel() const { return m_agcLevel; }
    [[nodiscard]] bool isSynthesizerLocked() const { return m_settling <= 0; }
    [[nodiscard]] bool hasCarrier() const { return m_carrier.has_value(); }
    /// The carrier in the filter; nothing without one.
    [[nodiscard]] const std::optional<IfSignal> &carrier() const { return m_carrier; }
    /// Offset of the AFC loop in kHz; with manual tuning the offset that is set.
    [[nodiscard]] double loopStress() const { return m_loopStress; }
    /// Whether the AFC loop follows a carrier.
    [[nodiscard]] bool isLoopLocked() const { return m_loopLocked; }

private:
    void stepLoop(double seconds);

    int m_polarisation;
    Controls m_controls;
    bool m_started = false;
    double m_settling = 0;
    double m_level = 0;
    double m_agcLevel = 0;
    double m_loopStress = 0;
    std::optional<IfSignal> m_carrier;
    bool m_loopLocked = false;
};

} // namespace sim
