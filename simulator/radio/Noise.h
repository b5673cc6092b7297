#pragma once

#include <QRandomGenerator>

namespace sim {

/// A stream of normally distributed random numbers.
class Noise
{
public:
    explicit Noise(quint32 seed) : m_random(seed) {}

    /// Standard deviation 1.
    [[nodiscard]] double gaussian();
    [[nodiscard]] QRandomGenerator &random() { return m_random; }

    /// One step of a random walk that returns to 0 and has standard deviation 1 in the long run; `noise` is one
    /// Gaussian draw, `correlation` the correlation time in seconds.
    [[nodiscard]] static double wander(double value, double noise, double seconds, double correlation);

private:
    QRandomGenerator m_random;
};

} // namespace sim
