#include "simulator/radio/BertCounter.h"

namespace sim {

void BertCounter::step(double seconds, bool locked, double bits, double errorRate)
{
    m_lockLosses += m_locked && !locked ? 1 : 0;
    m_locked = locked;
    m_seconds += seconds;
    m_presentRate = locked ? errorRate : 0;
    m_bits += locked ? bits : 0;
    m_errors += locked ? bits * errorRate : 0;
}

} // namespace sim
