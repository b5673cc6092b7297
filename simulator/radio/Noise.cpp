#include "simulator/radio/Noise.h"

#include <cmath>
#include <numbers>

namespace sim {

double Noise::gaussian()
{
    const double radius = std::sqrt(-2.0 * std::log(1.0 - m_random.generateDouble()));
    return radius * std::cos(2 * std::numbers::pi * m_random.generateDouble());
}

double Noise::wander(double value, double noise, double seconds, double correlation)
{
    const double memory = std::exp(-seconds / correlation);
    return value * memory + noise * std::sqrt(1 - memory * memory);
}

} // namespace sim
