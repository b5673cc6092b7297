#include "simulator/chassis/UnitSet.h"

#include "simulator/chassis/Request.h"
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

QByteArray UnitSet::answer(const Request &request) const
{
    Unit *const unit = find(request.address);
    if (!request.data) {
        // Without an answer the card stays silent; the client's time-out ends the query.
        return unit && unit->query(request.mnemonic) ? unit->reply(request.mnemonic) : QByteArray();
    }
    if (!unit)
        return kRefused;
    if (const auto found = unit->lookUp(request.mnemonic, *request.data))
        return request.address + ':' + request.mnemonic + ':' + *found;
    return !request.data->isEmpty() && unit->set(request.mnemonic, *request.data) ? kAcknowledged : kRefused;
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
