#include "simulator/chassis/UnitSet.h"

#include "simulator/links/FrameCutter.h"

namespace sim {

namespace {
const QByteArray kAcknowledged(1, Wire::kAck);
const QByteArray kRefused(1, Wire::kNak);
} // namespace

bool UnitSet::add(Unit *unit, const QJsonObject &values, QString &error)
{
    m_units.append(unit);
    connect(unit, &Unit::reported, this, [this, unit](const QByteArray &text) {
        if (unit->isFitted())
            Q_EMIT reported(text);
    });
    const QByteArray refused = unit->initialise(values);
    if (!refused.isEmpty())
        error = QString::fromUtf8("family: " + unit->address() + " does not take the value of " + refused);
    return refused.isEmpty();
}

Unit *UnitSet::find(const QByteArray &address) const
{
    for (Unit *unit : m_units) {
        if (unit->address() == address && unit->isFitted())
            return unit;
    }
    return nullptr;
}

QByteArray UnitSet::answer(const QByteArray &address, const QByteArray &mnemonic,
                           const std::optional<QByteArray> &data) const
{
    Unit *const unit = find(address);
    const auto found = unit && data ? unit->lookUp(mnemonic, *data) : std::nullopt;
    if (found)
        return address + ':' + mnemonic + ':' + *found;
    if (data)
        return unit && !data->isEmpty() && unit->set(mnemonic, *data) ? kAcknowledged : kRefused;
    // Without an answer the card stays silent; the client's time-out ends the query.
    return unit && unit->query(mnemonic) ? unit->reply(mnemonic) : QByteArray();
}

void UnitSet::loseVolatileState()
{
    for (Unit *unit : m_units)
        unit->loseVolatileState();
}

void UnitSet::reportSideEffects()
{
    for (Unit *unit : m_units)
        unit->reportSideEffects();
}

} // namespace sim
