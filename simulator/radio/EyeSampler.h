#pragma once

#include "simulator/radio/Noise.h"

#include <QByteArray>

#include <array>

namespace sim {

class Demodulator;

/// Generates the sample blocks of a demodulator.
class EyeSampler
{
public:
    static constexpr int kSamples = 256; ///< in a block; two signed 16-bit numbers each, most significant byte first

    explicit EyeSampler(quint32 seed) : m_noise(seed) {}

    /// Both axes of the received symbols over time, band-limited, with `kSamplesPerSymbol` samples a symbol.
    [[nodiscard]] QByteArray eyePattern(const Demodulator &source);
    /// One point a sample, from the middle of a symbol.
    [[nodiscard]] QByteArray constellation(const Demodulator &source);
    /// Five bytes of received data; the transmitter's are pseudo-random.
    [[nodiscard]] QByteArray serialData();

    static constexpr int kSamplesPerSymbol = 16;

private:
    struct Point
    {
        double x = 0;
        double y = 0;
    };

    /// A random one of `points` on the circle, with the axes weighted by the mode; the origin without a carrier.
    [[nodiscard]] Point symbol(const Demodulator &source, int points);
    /// Standard deviation of the noise on each axis.
    [[nodiscard]] static double disturbance(const Demodulator &source);
    void append(QByteArray &block, const Point &point, double sigma);

    Noise m_noise;
};

} // namespace sim
