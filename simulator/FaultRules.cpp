#include "FaultRules.h"

#include <algorithm>

bool FaultRules::Target::matches(const QByteArray &toAddress, const QByteArray &toMnemonic) const
{
    return (address.isEmpty() || address == toAddress) && (mnemonic.isEmpty() || mnemonic == toMnemonic);
}

void FaultRules::add(Fault fault, const Target &target, int count) { m_rules.append({ fault, target, count }); }

void FaultRules::cancel(Fault fault)
{
    m_rules.removeIf([fault](const Rule &rule) { return rule.fault == fault; });
}

void FaultRules::delay(int ms, const Target &target)
{
    if (ms == 0)
        m_delays.clear();
    else
        m_delays.prepend({ target, ms });
}

bool FaultRules::strikes(Fault fault, const QByteArray &address, const QByteArray &mnemonic)
{
    const auto rule = std::find_if(m_rules.begin(), m_rules.end(), [&](const Rule &candidate) {
        return candidate.fault == fault && candidate.target.matches(address, mnemonic);
    });
    if (rule == m_rules.end())
        return false;
    if (rule->left != kEvery && --rule->left == 0)
        m_rules.erase(rule);
    return true;
}

int FaultRules::delayMs(const QByteArray &address, const QByteArray &mnemonic) const
{
    const auto delay = std::find_if(m_delays.cbegin(), m_delays.cend(), [&](const Delay &candidate) {
        return candidate.target.matches(address, mnemonic);
    });
    return delay == m_delays.cend() ? 0 : delay->ms;
}

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
