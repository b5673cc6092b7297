#include "simulator/chassis/FaultRules.h"

#include <utility>

namespace sim {

FaultRules::Target FaultRules::Target::read(const QByteArray &text)
{
    const qsizetype colon = text.indexOf(':');
    return colon < 0 ? Target{ text, {} } : Target{ text.left(colon), text.mid(colon + 1) };
}

bool FaultRules::Target::matches(const QByteArray &toAddress, const QByteArray &toMnemonic) const
{
    return (address.isEmpty() || address == toAddress) && (mnemonic.isEmpty() || mnemonic == toMnemonic);
}

void FaultRules::add(Fault fault, const Target &target, const Share &share)
{
    m_rules.append({ fault, target, share });
}

void FaultRules::cancel(Fault fault)
{
    m_rules.removeIf([fault](const Rule &rule) { return rule.fault == fault; });
}

void FaultRules::delay(const Range &ms, const Target &target, int percent)
{
    m_delays.prepend({ target, ms, percent });
}

bool FaultRules::strikes(Fault fault, const QByteArray &address, const QByteArray &mnemonic)
{
    for (auto rule = m_rules.begin(); rule != m_rules.end(); ++rule) {
        if (rule->fault != fault || !rule->target.matches(address, mnemonic))
            continue;
        Share &left = rule->left;
        const bool isSpared = left.skipped > 0;
        left.skipped -= isSpared ? 1 : 0;
        if (isSpared || !happens(left.percent))
            continue;
        if (left.count != kEvery && --left.count == 0)
            m_rules.erase(rule);
        return true;
    }
    return false;
}

int FaultRules::delayMs(const QByteArray &address, const QByteArray &mnemonic)
{
    for (const Delay &delay : std::as_const(m_delays)) {
        if (delay.target.matches(address, mnemonic) && happens(delay.percent))
            return m_random.bounded(delay.ms.least, delay.ms.most + 1);
    }
    return 0;
}

/// 100 % draws no random number, so that a certain fault does not shift later random choices.
bool FaultRules::happens(int percent) { return percent >= kAll || m_random.bounded(kAll) < percent; }

QByteArray FaultRules::onTheWire(QByteArray frame)
{
    if (m_garbleLeft == 0)
        return frame;
    --m_garbleLeft;
    const bool loseEnd = m_random.bounded(2) == 0;
    if (loseEnd) {
        frame.chop(1);
    } else {
        const qsizetype victim = 1 + m_random.bounded(int(frame.size()) - 1);
        frame[victim] = char(frame[victim] ^ (1 << m_random.bounded(8)));
    }
    return frame;
}

} // namespace sim
