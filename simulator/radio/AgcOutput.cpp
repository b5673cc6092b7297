#include "simulator/radio/AgcOutput.h"

#include <QtMath>

#include <algorithm>
#include <array>

namespace sim {

namespace {

struct Slope
{
    double decibelsPerVolt;
    int fullScale; ///< mV
};

constexpr std::array<Slope, 3> kSlopes{ { { 50, 2500 }, { 20, 6000 }, { 10, 12000 } } };

} // namespace

int AgcOutput::millivolts(double level, double reference, int slope, bool negative)
{
    const Slope &chosen = kSlopes.at(size_t(std::clamp(slope, 0, int(kSlopes.size()) - 1)));
    const int output = std::clamp(qRound((level - reference) / chosen.decibelsPerVolt * 1000), 0, chosen.fullScale);
    return negative ? -output : output;
}

} // namespace sim
