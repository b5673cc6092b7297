#include "simulator/units/SpectralUnit.h"

#include "simulator/radio/RadioScene.h"

#include <algorithm>
#include <cmath>

namespace sim {

namespace {

constexpr auto kRows = std::to_array<SettingRow>({
    { "SPAN", Check::Range, "20", Plain, 0.1, 100 },
    { "DATA", Check::OnOff, "0", Volatile },
    { "RFFT", Check::ReadOnly },
});

constexpr int kLines = 256;
constexpr double kFloor = -150; // dBm, sent as 0
constexpr double kHighest = 255;
constexpr double kRipple = 1.5; // dB, measurement noise of one block

} // namespace

SpectralUnit::SpectralUnit(int number, quint32 seed, QObject *parent)
    : Unit("SP" + QByteArray::number(number), kRows, parent)
    , m_number(number)
    , m_noise(seed)
{
}

void SpectralUnit::sendBlock(const RadioScene &scene, const Tuning &tuning)
{
    const double span = value("SPAN").toDouble();
    const double width = span / kLines;
    QByteArray lines;
    for (int line = 0; line < kLines; ++line) {
        const double dBm = level(scene, tuning, line * width - span / 2, width) + kRipple * m_noise.gaussian();
        lines.append(char(std::lround(std::clamp(dBm - kFloor, 0.0, kHighest))));
    }
    if (change("RFFT", lines.toHex().toUpper()))
        report("RFFT");
}

double SpectralUnit::level(const RadioScene &scene, const Tuning &tuning, double offset, double width) const
{
    double strongest = kFloor;
    for (int receiver = 0; receiver < kReceivers; ++receiver) {
        const bool isSeen = m_number > kReceivers || m_number == receiver + 1;
        const double frequency = tuning.at(size_t(receiver)) + offset + width / 2;
        if (isSeen)
            strongest = std::max(strongest, scene.power(frequency, width, receiver));
    }
    return strongest;
}

} // namespace sim
