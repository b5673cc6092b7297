#include "simulator/units/ChangeAnnouncer.h"

#include "simulator/units/Unit.h"

namespace sim {

void ChangeAnnouncer::start(const QByteArray &mnemonic, const QList<Change> &changes)
{
    m_mnemonic = mnemonic;
    m_changes = changes;
    m_elapsedMs = 0;
}

void ChangeAnnouncer::abort() { m_mnemonic.clear(); }

void ChangeAnnouncer::step(int ms)
{
    if (!isBusy())
        return;
    const QByteArray prefix = "U0:" + m_mnemonic + ':';
    if (m_elapsedMs == 0) {
        Q_EMIT announced(prefix + '0');
    } else if (!m_changes.isEmpty()) {
        const Change change = m_changes.takeFirst();
        change.unit->report(change.mnemonic);
    } else if (m_elapsedMs >= kBusyMs) {
        m_mnemonic.clear();
        Q_EMIT announced(prefix + '1');
    }
    m_elapsedMs += ms;
}

} // namespace sim
