#pragma once

#include "support/SimulatedChassis.h"

#include <QMap>

/// What a head serves to its remote client, and how that differs from what the simulated chassis holds. Settings and
/// lists are looked at, by the client's keys and in its form ("R1:FREQ" and "2250.5"); readings move on by themselves.
class ClientView
{
public:
    using Values = QMap<QByteArray, QByteArray>;

    /// Asks the head of @p chassis for everything. Empty if it does not answer.
    [[nodiscard]] static ClientView read(const SimulatedChassis &chassis);

    /// Those that the client may change.
    [[nodiscard]] const Values &settings() const { return m_settings; }
    [[nodiscard]] bool isEmpty() const { return m_settings.isEmpty(); }
    /// What differs from what the chassis holds, a line each. No channel may be left out, and nothing that @p earlier
    /// knew may be unknown, readings included.
    [[nodiscard]] QStringList differences(SimulatedChassis &chassis, const ClientView &earlier) const;

    /// Asks again and again until nothing differs, or the time is over; what differs at the end.
    [[nodiscard]] static QStringList differencesAfter(int ms, SimulatedChassis &chassis, const ClientView &earlier);

private:
    Values m_settings;
    Values m_lists;
    Values m_readings;
};
