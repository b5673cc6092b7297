#pragma once

#include "simulator/units/Unit.h"

#include <QList>

namespace sim {

/// The units that answer on one link, found by their address.
class UnitSet : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Adds a unit with its start values; it is not owned. False with `error` set if it does not take the values.
    [[nodiscard]] bool add(Unit *unit, const QJsonObject &values, QString &error);
    [[nodiscard]] const QList<Unit *> &all() const { return m_units; }
    /// Null if there is no such address, or no card behind it.
    [[nodiscard]] Unit *find(const QByteArray &address) const;

    /// The text that answers a request; empty if the card stays silent. Without `data` the request is a query.
    [[nodiscard]] QByteArray answer(const QByteArray &address, const QByteArray &mnemonic,
                                    const std::optional<QByteArray> &data) const;
    /// Power loss.
    void loseVolatileState();
    /// Sends what has changed along with other settings.
    void reportSideEffects();

Q_SIGNALS:
    /// An unsolicited message of a unit whose card is there.
    void reported(const QByteArray &text);

private:
    QList<Unit *> m_units;
};

} // namespace sim
