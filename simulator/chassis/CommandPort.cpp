#include "simulator/chassis/CommandPort.h"

#include "simulator/links/Link.h"
#include "simulator/links/Trace.h"
#include "simulator/units/Unit.h"

#include <algorithm>

namespace sim {

namespace {
const QByteArray kAcknowledged(1, Wire::kAck);
const QByteArray kRefused(1, Wire::kNak);
} // namespace

CommandPort::CommandPort(Link &link, FaultRules &faults, Trace &trace, QObject *parent)
    : QObject(parent)
    , m_link(link)
    , m_faults(faults)
    , m_trace(trace)
{
    connect(&m_link, &Link::received, this, &CommandPort::receive);
    connect(&m_link, &Link::interrupted, this, [this] {
        m_cutter.reset();
        m_lateAnswers.clear();
    });
}

bool CommandPort::addUnit(Unit *unit, const QJsonObject &values, QString &error)
{
    m_units.append(unit);
    connect(unit, &Unit::reported, this, [this, unit](const QByteArray &text) {
        if (m_awake && unit->isFitted())
            sendText(text);
    });
    const QByteArray refused = unit->initialise(values);
    if (!refused.isEmpty())
        error = QString::fromUtf8("family: " + unit->address() + " does not take the value of " + refused);
    return refused.isEmpty();
}

Unit *CommandPort::unit(const QByteArray &address) const
{
    for (Unit *unit : m_units) {
        if (unit->address() == address && unit->isFitted())
            return unit;
    }
    return nullptr;
}

void CommandPort::setAwake(bool awake)
{
    m_awake = awake;
    m_cutter.reset();
    m_lateAnswers.clear();
    if (!awake)
        m_link.silence();
}

bool CommandPort::sendText(const QByteArray &text)
{
    const QByteArray wire = m_faults.onTheWire(Wire::framed(text));
    const bool sent = m_link.send(wire);
    if (sent)
        m_trace.write(Trace::Direction::Sent, m_link.role(), wire == Wire::framed(text) ? text : wire);
    return sent;
}

bool CommandPort::sendRaw(const QByteArray &bytes)
{
    const bool sent = m_link.send(bytes);
    if (sent)
        m_trace.write(Trace::Direction::Sent, m_link.role(), bytes);
    return sent;
}

void CommandPort::step(int ms)
{
    for (LateAnswer &answer : m_lateAnswers)
        answer.leftMs -= ms;
    const auto due = std::stable_partition(m_lateAnswers.begin(), m_lateAnswers.end(),
                                           [](const LateAnswer &answer) { return answer.leftMs > 0; });
    const QList<LateAnswer> leaving(due, m_lateAnswers.end());
    m_lateAnswers.erase(due, m_lateAnswers.end());
    for (const LateAnswer &answer : leaving)
        sendText(answer.text);
}

void CommandPort::receive(const QByteArray &bytes)
{
    for (const QByteArray &text : m_cutter.feed(bytes)) {
        m_trace.write(Trace::Direction::Received, m_link.role(), text);
        if (m_awake)
            handleRequest(text);
    }
}

void CommandPort::handleRequest(const QByteArray &text)
{
    const qsizetype first = text.indexOf(':');
    if (first < 0)
        return;
    const qsizetype second = text.indexOf(':', first + 1);
    const bool hasData = second >= 0;
    const QByteArray address = text.left(first);
    const QByteArray mnemonic = text.mid(first + 1, hasData ? second - first - 1 : -1);
    const QByteArray data = hasData ? text.mid(second + 1) : QByteArray();
    if (m_faults.strikes(FaultRules::Fault::Ignore, address, mnemonic))
        return;
    const bool refused = m_faults.strikes(FaultRules::Fault::Refuse, address, mnemonic);
    const QByteArray answer = refused ? kRefused : answerTo(address, mnemonic, hasData ? &data : nullptr);
    if (answer.isEmpty() || m_faults.strikes(FaultRules::Fault::Lose, address, mnemonic))
        return;
    const int late = m_faults.delayMs(address, mnemonic);
    if (late > 0)
        m_lateAnswers.append({ late, answer });
    else
        sendText(answer);
}

QByteArray CommandPort::answerTo(const QByteArray &address, const QByteArray &mnemonic, const QByteArray *data)
{
    Unit *const target = unit(address);
    const auto found = target && data ? target->lookUp(mnemonic, *data) : std::nullopt;
    if (found)
        return address + ':' + mnemonic + ':' + *found;
    if (data)
        return target && !data->isEmpty() && target->set(mnemonic, *data) ? kAcknowledged : kRefused;
    // A card without an answer stays silent, the client's time-out is what ends the query.
    return target && target->query(mnemonic) ? target->reply(mnemonic) : QByteArray();
}

} // namespace sim
