#pragma once

#include "simulator/chassis/CommandPort.h"
#include "simulator/chassis/UnitSet.h"
#include "simulator/units/SelfTestUnit.h"
#include "simulator/units/SpectralSystemUnit.h"
#include "simulator/units/SpectralUnit.h"

#include <memory>
#include <vector>

namespace sim {

/// The card behind the spectral link: a small chassis of its own, with a version, a card list and the units of that
/// list.
class SpectralCard
{
public:
    /// All of these must outlive the card.
    SpectralCard(Link &link, FaultRules &faults, Trace &trace) : m_link(link), m_port(link, m_units, faults, trace) {}

    /// `family` holds start values by unit address, "U0" with the card list among them. False with `error` set if a
    /// unit does not take them.
    [[nodiscard]] bool build(const QJsonObject &family, quint32 seed, QString &error);
    [[nodiscard]] const UnitSet &units() const { return m_units; }
    void powerOn() { m_port.setAwake(true); }
    /// Stops sending at once and loses volatile state.
    void powerOff();
    /// Advances one step of simulated time while awake; `count` numbers the steps.
    void step(qint64 count, int ms, const RadioScene &scene, const SpectralUnit::Tuning &tuning);

private:
    [[nodiscard]] bool add(Unit *unit, const QJsonObject &family, QString &error);

    Link &m_link;
    UnitSet m_units;
    CommandPort m_port;
    SpectralSystemUnit m_system;
    std::vector<std::unique_ptr<SpectralUnit>> m_analysers;
    std::unique_ptr<SelfTestUnit> m_selfTest; // null without such a card
};

} // namespace sim
