#include "tools/monkey/ClientMonkey.h"

#include "support/SimulatedChassis.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kMostUnanswered = 4;

/// Values that fit settings which take no small numbers.
const QMap<QByteArray, QByteArray> kFitting{
    { "NAME", "Alpha|Beta gamma" },
    { "FREQ", "2250.5|2260.5|1445.5" },
    { "ANCF", "-20|10" },
    { "RATEA", "1000000|512000|14000000" },
    { "RATEB", "1000000|512000" },
    { "TMID", "0|0.35|0.31" },
    { "LBWB", "0.5|2" },
    { "LBWC", "1|3" },
    { "CSLB", "0.5|2" },
    { "CSLC", "1|3" },
    { "DFIR", "-1|0" },
    { "DMOD", "0|1|4|8|17" },
    { "DSRC", "1|2|3|A" },
    { "SWRG", "100|50" },
    { "SWRT", "50000|25000" },
    { "DFSZ", "0200|0400" },
    { "DFWD", "fe6b|0100" },
    { "MEAN", "7fff|3fff" },
    { "BEPO", "0000|0005" },
    { "TFREQ", "10500000|2200000" },
    { "ADDR", "10.0.0.1|10.0.0.2" },
    { "MASK", "255.255.255.0|255.255.0.0" },
    { "GWAY", "10.0.0.3|10.0.0.4" },
    { "NTPS", "10.0.0.5|10.0.0.6" },
    { "RMIP", "10.0.0.7|10.0.0.8" },
    { "PORT", "5001|5002" },
    { "MTUS", "1400|1500" },
    { "SPAN", "10|20" },
    { "SLAVE", "0|0|0|1|2" },
};

/// How the head is to write a client's set: older demodulators have commands of their own for some registers.
QByteArray wireForm(const QByteArray &key, const QByteArray &value)
{
    static const QMap<QByteArray, QByteArray> wireNames{ { "DDQM", "DQMON:" },  { "DFSZ", "DQMFS:" },
                                                         { "ADEQ", "DEQE:" },   { "DFWD", "CDRG:85" },
                                                         { "MEAN", "CDRG:86" }, { "BEPO", "CDRG:87" } };
    const QByteArray address = key.left(key.indexOf(':'));
    const QByteArray mnemonic = key.sliced(address.size() + 1);
    if (mnemonic == "DSRC")
        return "U0:SDM" + address.last(1) + ':' + value;
    if (mnemonic == "LBWB" || mnemonic == "LBWC" || mnemonic == "CSLB" || mnemonic == "CSLC")
        return key + ':' + QByteArray::number(value.toDouble() / 100, 'g', 6);
    return wireNames.contains(mnemonic) ? address + ':' + wireNames[mnemonic] + value : key + ':' + value;
}

} // namespace

ClientMonkey::ClientMonkey(const SimulatedChassis &chassis, const ClientView &view, quint32 seed, Ledger &ledger)
    : m_ledger(ledger)
    , m_random(seed)
    , m_settings(view.settings())
    , m_keys(view.settings().keys())
{
    m_keys.removeIf(
        [](const QByteArray &key) { return key.endsWith(":DATA"); }); // the head switches spectra off itself
    if (!m_terminal.open(chassis.path(u"client-remote"_s)))
        qFatal("no link for a client");
}

void ClientMonkey::act()
{
    const QByteArray received = m_terminal.readBytes(0);
    m_unanswered -= int(received.count("\x06\r") + received.count("\x15\r"));
    if (m_unanswered >= kMostUnanswered)
        return;
    const QByteArray key = pick(m_keys);
    const QByteArray value = valueFor(key);
    const QByteArray frame = '\x02' + key + ':' + value + '\r';
    if (m_terminal.writeBytes(frame) != frame.size())
        qFatal("the link takes no set of the client");
    m_ledger.ask(wireForm(key, value));
    ++m_unanswered;
}

QByteArray ClientMonkey::valueFor(const QByteArray &key)
{
    const QByteArray fitting = kFitting.value(key.sliced(key.indexOf(':') + 1), "0|1|2|3");
    return m_random.bounded(10) == 0 ? m_settings[key] : pick(fitting.split('|'));
}
