#include "simulator/chassis/CommandPort.h"

#include "simulator/chassis/Request.h"
#include "simulator/chassis/UnitSet.h"
#include "simulator/links/Link.h"
#include "simulator/links/Trace.h"

#include <algorithm>

namespace sim {

namespace {
const QByteArray kRefused(1, Wire::kNak);
} // namespace

CommandPort::CommandPort(Link &link, const UnitSet &units, FaultRules &faults, Trace &trace, QObject *parent)
    : QObject(parent)
    , m_link(link)
    , m_units(units)
    , m_faults(faults)
    , m_trace(trace)
{
    connect(&m_link, &Link::received, this, &CommandPort::receive);
    connect(&m_link, &Link::interrupted, this, [this] {
        m_cutter.reset();
        m_lateAnswers.clear();
    });
    connect(&units, &UnitSet::reported, this, [this](const QByteArray &text) {
        if (m_awake)
            sendText(text);
    });
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
    const auto request = Request::read(text);
    if (!request || m_faults.strikes(FaultRules::Fault::Ignore, request->address, request->mnemonic))
        return;
    const bool refused = m_faults.strikes(FaultRules::Fault::Refuse, request->address, request->mnemonic);
    const QByteArray answer = refused ? kRefused : m_units.answer(*request);
    if (answer.isEmpty() || m_faults.strikes(FaultRules::Fault::Lose, request->address, request->mnemonic))
        return;
    const int late = m_faults.delayMs(request->address, request->mnemonic);
    if (late > 0)
        m_lateAnswers.append({ late, answer });
    else
        sendText(answer);
}

} // namespace sim
