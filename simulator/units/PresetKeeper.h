#pragma once

#include "simulator/units/ChangeAnnouncer.h"

namespace sim {

class PresetStore;

/// What the preset commands of the chassis do: snapshots of all units, and going back to them.
class PresetKeeper
{
public:
    /// Both must outlive the keeper.
    PresetKeeper(PresetStore &store, ChangeAnnouncer &announcer) : m_store(store), m_announcer(announcer) {}

    /// Adds a unit to every snapshot. Not owned.
    void addUnit(Unit *unit) { m_units.append(unit); }

    /// False if the name or the store does not allow it.
    [[nodiscard]] bool store(const QByteArray &name);
    /// Goes back to a preset and announces what changed. False if there is none or another change is under way.
    [[nodiscard]] bool restore(const QByteArray &name);
    [[nodiscard]] bool remove(const QByteArray &name);
    /// The names, each followed by one blank.
    [[nodiscard]] QByteArray listing() const;

private:
    PresetStore &m_store;
    ChangeAnnouncer &m_announcer;
    QList<Unit *> m_units;
};

} // namespace sim
