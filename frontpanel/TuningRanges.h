#pragma once

#include <QList>

#include <optional>

/// The frequency ranges of a receiver.
class TuningRanges
{
public:
    static constexpr double kStep = 0.1; ///< MHz

    /// @param bounds in MHz, the upper and the lower one of each range in turn; they may make no sense
    explicit TuningRanges(QList<double> bounds) : m_bounds(std::move(bounds)) {}

    [[nodiscard]] bool contains(double frequency) const;
    /// Where a step to @p frequency leads if it crosses the edge of a range: to the nearest edge of the next range, and
    /// from the last range to the first.
    [[nodiscard]] std::optional<double> beyondEdge(double frequency) const;

private:
    QList<double> m_bounds;
};
