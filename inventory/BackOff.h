#pragma once

#include <QtGlobal>

/// How long a chassis is let be before everything is asked anew: twice as long each time that it was of no use.
class BackOff
{
public:
    void reset() { m_doublings = 0; }
    void lengthen() { m_doublings = qMin(m_doublings + 1, kMostDoublings); }
    [[nodiscard]] bool isLengthened() const { return m_doublings > 0; }
    [[nodiscard]] bool isOver(qint64 ms) const { return ms >= kFirstMs << m_doublings; }

private:
    static constexpr qint64 kFirstMs = 10'000;
    static constexpr int kMostDoublings = 6;

    int m_doublings = 0;
};
