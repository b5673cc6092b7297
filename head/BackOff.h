#pragma once

#include <QtGlobal>

/// Exponential back-off between re-reads; doubles when one did not help.
class BackOff
{
public:
    void reset() { m_doublings = 0; }
    void lengthen() { m_doublings = qMin(m_doublings + 1, kMostDoublings); }
    [[nodiscard]] bool isLengthened() const { return m_doublings > 0; }
    /// Whether @p ms have been long enough for the next re-read.
    /// @param firstMs delay of the first one
    [[nodiscard]] bool isOver(qint64 ms, qint64 firstMs = kFirstMs) const { return ms >= firstMs << m_doublings; }

    static constexpr qint64 kFirstMs = 10'000;

private:
    static constexpr int kMostDoublings = 6;

    int m_doublings = 0;
};
