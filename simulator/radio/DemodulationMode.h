#pragma once

#include <QStringView>

#include <string_view>

namespace sim {

/// A modulation that demodulator cards offer.
struct DemodulationMode
{
    int code; ///< value of "DMOD"
    std::string_view name;
    double lowestRate; ///< bits a second
    double highestRate;
    int points;        ///< of the constellation; frequency modulation is drawn as eight points on the circle
    double quadrature; ///< weight of the second axis: 1 balanced, less in the unbalanced modes

    [[nodiscard]] bool takesRate(double rate) const { return rate >= lowestRate && rate <= highestRate; }
    /// Whether the phase is modulated, so that a carrier loop must lock first.
    [[nodiscard]] bool isCoherent() const { return points <= 4; }

    /// Null if there is no such mode.
    [[nodiscard]] static const DemodulationMode *withCode(int code);
    [[nodiscard]] static const DemodulationMode *named(QStringView name);
};

} // namespace sim
