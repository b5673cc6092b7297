#pragma once

#include "simulator/radio/Noise.h"
#include "simulator/units/Unit.h"

#include <array>

namespace sim {

class RadioScene;

/// A spectrum analyser, "SP1" to "SP3": the first two look at the input of a receiver, the third at the combiner, which
/// shows the better of both in every line.
class SpectralUnit : public Unit
{
    Q_OBJECT

public:
    static constexpr int kReceivers = 2;
    /// MHz the receivers are tuned to; 0 for one that is not there.
    using Tuning = std::array<double, kReceivers>;

    /// `number` 1 to 3.
    SpectralUnit(int number, quint32 seed, QObject *parent = nullptr);

    /// Whether clients want blocks.
    [[nodiscard]] bool isSending() const { return isOn("DATA"); }
    /// Sends a block of the spectrum as it is now.
    void sendBlock(const RadioScene &scene, const Tuning &tuning);

private:
    /// dBm of the line that begins `offset` MHz above the tuned frequency.
    [[nodiscard]] double level(const RadioScene &scene, const Tuning &tuning, double offset, double width) const;

    int m_number;
    Noise m_noise;
};

} // namespace sim
