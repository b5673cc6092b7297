#pragma once

#include "simulator/radio/IfSignal.h"
#include "simulator/radio/Noise.h"

#include <QList>

#include <array>
#include <optional>

namespace sim {

/// One signal on the air.
struct RadioSignal
{
    double frequency = 0; ///< MHz
    double level = 0;     ///< dBm at the receiver input, before fading
    double bandwidth = 1; ///< MHz occupied
    double fading = 0;    ///< dB, standard deviation of the slow fading
    double drift = 0;     ///< kHz, how far the carrier wanders to either side
    int mode = -1;        ///< code of its modulation; negative: none
    double rate = 0;      ///< bits a second
};

/// The signals at the antenna: they fade and drift, over noise. Random numbers are drawn once a step only, so that the
/// state depends on seed and number of steps alone.
class RadioScene
{
public:
    static constexpr int kPolarisations = 2;

    RadioScene(const QList<RadioSignal> &signalList, quint32 seed);

    void step(double seconds);
    /// Changes the level of the signal at `frequency` (MHz, within 50 kHz) or adds a steady one there.
    void setSignal(double frequency, double level);
    /// Power in dBm, noise included, in a band of `bandwidth` MHz around `frequency` MHz.
    [[nodiscard]] double power(double frequency, double bandwidth, int polarisation) const;
    /// The strongest carrier inside the band that is clear of the noise.
    [[nodiscard]] std::optional<IfSignal> carrier(double frequency, double bandwidth, int polarisation) const;
    /// Receiver noise in dBm in `bandwidth` MHz.
    [[nodiscard]] double noise(double bandwidth, int polarisation) const;

private:
    struct Emission
    {
        RadioSignal signal;
        std::array<double, kPolarisations> fade{};
        double driftPhase = 0;

        [[nodiscard]] double frequencyNow() const;
        [[nodiscard]] double levelNow(int polarisation) const;
    };

    Noise m_noise;
    QList<Emission> m_emissions;
    std::array<double, kPolarisations> m_noiseRipple{};
};

} // namespace sim
