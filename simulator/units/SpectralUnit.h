#pragma once

#include "simulator/radio/Noise.h"
#include "simulator/units/Unit.h"

#include <array>

namespace sim {

class RadioScene;

/// A spectrum analyser, "SP1" to "SP3": the first two show the input of a receiver, the third the combiner, which has
/// the stronger of both in every line.
class SpectralUnit : public Unit
{
    Q_OBJECT

public:
    static constexpr int kReceivers = 2;
    /// Frequencies of the receivers in MHz; 0 for a missing one.
    using Tuning = std::array<double, kReceivers>;

    /// `number` 1 to 3.
    SpectralUnit(int number, quint32 seed, QObject *parent = nullptr);

    /// Whether clients want blocks.
    [[nodiscard]] bool isSending() const { return isOn("DATA"); }
    /// Sends a block of the current spectrum.
    void sendBlock(const RadioScene &scene, const Tuning &tuning);

private:
    /// Level in dBm of the line that begins `offset` MHz above the tuned frequency.
    [[nodiscard]] double level(const RadioScene &scene, const Tuning &tuning, double offset, double width) const;

    int m_number;
    Noise m_noise;
};

} // namespace sim
