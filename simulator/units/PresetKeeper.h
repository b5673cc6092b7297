#pragma once

#include "simulator/units/ChangeAnnouncer.h"

namespace sim {

class PresetStore;

/// Carries out the preset commands of the chassis: takes snapshots of all units and restores them.
class PresetKeeper
{
public:
    /// Both must outlive the keeper.
    PresetKeeper(PresetStore &store, ChangeAnnouncer &announcer) : m_store(store), m_announcer(announcer) {}

    /// Adds a unit to every snapshot. Not owned.
    void addUnit(Unit *unit) { m_units.append(unit); }

    /// False if the name or the store does not allow it.
    [[nodiscard]] bool store(const QByteArray &name);
    /// Restores a preset and announces what changed. False if there is no such preset or another change is in progress.
    [[nodiscard]] bool restore(const QByteArray &name);
    [[nodiscard]] bool remove(const QByteArray &name);
    /// The names of all presets, each followed by one blank.
    [[nodiscard]] QByteArray listing() const;

private:
    PresetStore &m_store;
    ChangeAnnouncer &m_announcer;
    QList<Unit *> m_units;
};

} // namespace sim
