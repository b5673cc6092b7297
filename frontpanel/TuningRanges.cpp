#include "frontpanel/TuningRanges.h"

#include <cmath>

namespace {

constexpr double kTolerance = 1e-6; // MHz; sums of tenths are not exact

bool isSame(double a, double b) { return std::abs(a - b) < kTolerance; }

} // namespace

bool TuningRanges::contains(double frequency) const
{
    for (qsizetype upper = 0; upper + 1 < m_bounds.size(); upper += 2) {
        if (frequency <= m_bounds[upper] + kTolerance && frequency >= m_bounds[upper + 1] - kTolerance)
            return true;
    }
    return false;
}

std::optional<double> TuningRanges::beyondEdge(double frequency) const
{
    const auto count = m_bounds.size();
    for (qsizetype lower = 1; lower < count; lower += 2) {
        if (isSame(frequency, m_bounds[lower] - kStep))
            return m_bounds[(lower + 1) % count];
    }
    for (qsizetype upper = 0; upper < count; upper += 2) {
        if (isSame(frequency, m_bounds[upper] + kStep))
            return m_bounds[(upper + count - 1) % count];
    }
    return std::nullopt;
}
