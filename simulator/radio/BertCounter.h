#pragma once

#include <QtGlobal>

namespace sim {

/// Counts what a bit error rate tester sees.
class BertCounter
{
public:
    /// Advances time while the tester is on. With lock on the test pattern `bits` were received, wrong with probability
    /// `errorRate`.
    void step(double seconds, bool locked, double bits, double errorRate);
    void reset() { *this = BertCounter(); }

    [[nodiscard]] bool isLocked() const { return m_locked; }
    [[nodiscard]] qint64 lockLosses() const { return m_lockLosses; }
    [[nodiscard]] qint64 seconds() const { return qint64(m_seconds); }
    [[nodiscard]] qint64 bits() const { return qint64(m_bits); }
    [[nodiscard]] qint64 errors() const { return qint64(m_errors); }
    /// Error rate of the last step; 0 without lock.
    [[nodiscard]] double presentRate() const { return m_presentRate; }
    /// Error rate since the reset.
    [[nodiscard]] double totalRate() const { return m_bits > 0 ? m_errors / m_bits : 0; }

private:
    bool m_locked = false;
    qint64 m_lockLosses = 0;
    double m_seconds = 0;
    double m_bits = 0;
    double m_errors = 0;
    double m_presentRate = 0;
};

} // namespace sim
