#include "simulator/radio/Tuner.h"

#include "simulator/radio/RadioScene.h"

#include <cmath>
#include <numbers>

namespace sim {

namespace {

constexpr double kSettlingSeconds = 0.3;
constexpr double kPullRange = 200.0; // kHz
constexpr double kLockWindow = 1.0;  // kHz

/// The share of the distance to its target that a first-order loop covers in one step.
double approach(double seconds, double timeConstant) { return 1.0 - std::exp(-seconds / timeConstant); }

} // namespace

void Tuner::setControls(const Controls &controls)
{
    if (controls.frequency != m_controls.frequency)
        m_settling = kSettlingSeconds;
    m_controls = controls;
}

void Tuner::step(const RadioScene &scene, const std::optional<Playback> &playback, double seconds)
{
    m_settling -= isSynthesizerLocked() ? 0 : seconds;
    m_level = isSynthesizerLocked() ? scene.power(m_controls.frequency, m_controls.bandwidth, m_polarisation)
                                    : scene.noise(m_controls.bandwidth, m_polarisation);
    m_carrier.reset();
    if (isSynthesizerLocked())
        m_carrier = scene.carrier(m_controls.frequency, m_controls.bandwidth, m_polarisation);
    if (playback) {
        m_level = playback->level;
        m_carrier = playback->carrier;
    }
    if (!m_started)
        m_agcLevel = m_level;
    m_started = true;
    if (!m_controls.agcFrozen)
        m_agcLevel += (m_level - m_agcLevel) * approach(seconds, m_controls.agcSeconds);
    stepLoop(seconds);
}

void Tuner::stepLoop(double seconds)
{
    if (m_controls.loopBandwidth <= 0) {
        m_loopStress = m_controls.manualOffset;
        m_loopLocked = false;
        return;
    }
    const bool inReach = m_carrier && std::abs(m_carrier->offset) <= kPullRange;
    const double target = inReach ? m_carrier->offset : 0;
    m_loopStress +=
        (target - m_loopStress) * approach(seconds, 1.0 / (2 * std::numbers::pi * m_controls.loopBandwidth));
    m_loopLocked = inReach && std::abs(target - m_loopStress) < kLockWindow;
}

} // namespace sim
