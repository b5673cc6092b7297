#include "simulator/radio/EyeSampler.h"

#include "simulator/radio/DemodulationMode.h"
#include "simulator/radio/Demodulator.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sim {

namespace {

constexpr double kAmplitude = 0.6;  // of full scale
constexpr double kNoiseAlone = 0.3; // of full scale, standard deviation without a carrier
constexpr double kRollOff = 0.5;    // of the pulse shape
constexpr int kReach = 3;           // symbols to either side that a pulse reaches
constexpr int kSerialBytes = 5;

/// A pulse of raised-cosine spectrum: 1 at its own symbol, 0 at all others. `time` in symbols.
double pulse(double time)
{
    const double ringing = 2 * kRollOff * time;
    const double denominator = 1 - ringing * ringing;
    const double phase = std::numbers::pi * time;
    const double sinc = time == 0 ? 1 : std::sin(phase) / phase;
    // Where the denominator is 0, use the limit.
    return std::abs(denominator) < 1e-9 ? std::numbers::pi / 4 * sinc : sinc * std::cos(kRollOff * phase) / denominator;
}

qint16 quantised(double value)
{
    constexpr double kScale = 32768;
    return qint16(std::clamp(std::round(value * kScale), -kScale, kScale - 1));
}

} // namespace

QByteArray EyeSampler::eyePattern(const Demodulator &source)
{
    constexpr int kSymbols = kSamples / kSamplesPerSymbol + 2 * kReach;
    // After the discriminator, frequency modulation has two levels on one axis.
    const int levels = source.mode() && source.mode()->isCoherent() ? source.mode()->points : 2;
    std::array<Point, kSymbols> symbols;
    std::generate(symbols.begin(), symbols.end(), [&] { return symbol(source, levels); });
    // Without bit sync the sampling phase is arbitrary.
    const double slip = source.isBitSyncLocked() ? 0 : m_noise.random().generateDouble();
    const double sigma = disturbance(source);
    QByteArray block;
    for (int sample = 0; sample < kSamples; ++sample) {
        const double time = kReach + slip + double(sample) / kSamplesPerSymbol;
        Point sum;
        for (int index = int(time) - kReach + 1; index <= std::min(int(time) + kReach, kSymbols - 1); ++index) {
            const double weight = pulse(time - index);
            sum.x += weight * symbols.at(size_t(index)).x;
            sum.y += weight * symbols.at(size_t(index)).y;
        }
        append(block, sum, sigma);
    }
    return block;
}

QByteArray EyeSampler::constellation(const Demodulator &source)
{
    const double sigma = disturbance(source);
    const int points = source.mode() ? source.mode()->points : 0;
    QByteArray block;
    for (int sample = 0; sample < kSamples; ++sample) {
        const Point point = symbol(source, points);
        // Without carrier lock the constellation rotates.
        const double turn = source.isLocked() ? 0 : 2 * std::numbers::pi * m_noise.random().generateDouble();
        append(block,
               { point.x * std::cos(turn) - point.y * std::sin(turn),
                 point.x * std::sin(turn) + point.y * std::cos(turn) },
               sigma);
    }
    return block;
}

QByteArray EyeSampler::serialData()
{
    QByteArray bytes;
    for (int index = 0; index < kSerialBytes; ++index)
        bytes.append(char(m_noise.random().bounded(256)));
    return bytes;
}

EyeSampler::Point EyeSampler::symbol(const Demodulator &source, int points)
{
    if (!source.hasInput() || !source.mode())
        return {};
    // Two points lie on the first axis; four or eight lie off both axes.
    const double first = points > 2 ? std::numbers::pi / points : 0;
    const double angle = first + 2 * std::numbers::pi * m_noise.random().bounded(points) / points;
    return { kAmplitude * std::cos(angle), kAmplitude * std::sin(angle) * source.mode()->quadrature };
}

double EyeSampler::disturbance(const Demodulator &source)
{
    if (!source.hasInput())
        return kNoiseAlone;
    return std::min(kNoiseAlone, kAmplitude * std::pow(10.0, -source.bitEnergy() / 20) / std::numbers::sqrt2);
}

void EyeSampler::append(QByteArray &block, const Point &point, double sigma)
{
    for (const double value : { point.x, point.y }) {
        const qint16 sample = qToBigEndian(quantised(value + sigma * m_noise.gaussian()));
        block.append(reinterpret_cast<const char *>(&sample), sizeof sample);
    }
}

} // namespace sim
