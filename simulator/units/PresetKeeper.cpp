#include "simulator/units/PresetKeeper.h"

#include "simulator/units/PresetStore.h"
#include "simulator/units/Unit.h"

namespace sim {

bool PresetKeeper::store(const QByteArray &name)
{
    QJsonObject state;
    for (const Unit *unit : m_units)
        state.insert(QString::fromLatin1(unit->address()), unit->storedState());
    return m_store.store(name, state);
}

bool PresetKeeper::restore(const QByteArray &name)
{
    if (!m_store.contains(name) || m_announcer.isBusy())
        return false;
    const QJsonObject state = m_store.state(name);
    QList<ChangeAnnouncer::Change> changes;
    for (Unit *unit : m_units) {
        const QJsonObject unitState = state.value(QString::fromLatin1(unit->address())).toObject();
        for (const QByteArray &mnemonic : unit->restoreState(unitState))
            changes.append({ unit, mnemonic });
    }
    m_announcer.start("PDONE", changes);
    return true;
}

bool PresetKeeper::remove(const QByteArray &name) { return m_store.remove(name); }

QByteArray PresetKeeper::listing() const
{
    QByteArray text;
    for (const QByteArray &name : m_store.names())
        text += name + ' ';
    return text;
}

} // namespace sim
