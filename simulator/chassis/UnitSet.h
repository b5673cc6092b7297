#pragma once

#include "simulator/units/Unit.h"

#include <QList>

namespace sim {

struct Request;

/// The units that answer on one link, by address.
class UnitSet : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Adds a unit with its start values; it is not owned. False with `error` set if it does not take the values.
    [[nodiscard]] bool add(Unit *unit, const QJsonObject &values, QString &error);
    [[nodiscard]] const QList<Unit *> &all() const { return m_units; }
    /// Null if there is no such address or its card is missing.
    [[nodiscard]] Unit *find(const QByteArray &address) const;

    /// The text that answers a request; empty if the card stays silent.
    [[nodiscard]] QByteArray answer(const Request &request) const;
    /// Power loss.
    void loseVolatileState();
    /// Reports the settings that changed as a side effect.
    void reportSideEffects();

Q_SIGNALS:
    /// An unsolicited message of a unit whose card is there.
    void reported(const QByteArray &text);

private:
    QList<Unit *> m_units;
};

} // namespace sim
