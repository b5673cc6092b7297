#include "simulator/units/TmoipStreamUnit.h"

#include <algorithm>

namespace sim {

namespace {

constexpr auto kRows = std::to_array<SettingRow>({
    { "NAME", Check::Text, "PCM", Stored },
    { "SLAVE", Check::ReadOnly, "0" },
    { "FLOW", Check::OnOff, "0", Stored },
    { "PROT", Check::Index, "0", Stored, 0, 2 },
    { "RMIP", Check::Ipv4, "192.168.1.100", Stored },
    { "PORT", Check::Index, "5001", Stored, 1500, 65535 },
    { "HEAD", Check::Index, "0", Stored, 0, 2 },
    { "BUFF", Check::Index, "0", Stored, 0, 1 },
    { "MTUS", Check::Index, "1500", Stored, 400, 1500 },
    { "RBUF", Check::Index, "8", Stored, 1, 256 },
    { "INPZ", Check::Index, "0", Stored, 0, 2 },
    // Stored and returned, without effect on the simulation.
    { "ID10", Check::Text, "1", Stored },
    { "SPRT", Check::Text, "0", Stored },
    { "ENDN", Check::Text, "0", Stored },
    { "STAT", Check::ReadOnly, "", Measured },
    { "RATE", Check::ReadOnly, "", Measured },
    { "RRAT", Check::ReadOnly, "", Measured },
    { "TXRT", Check::ReadOnly, "", Measured },
    { "TXBT", Check::ReadOnly, "", Measured },
    { "RXBT", Check::ReadOnly, "", Measured },
    { "RETX", Check::ReadOnly, "", Measured },
    { "DROP", Check::ReadOnly, "", Measured },
    { "OOPS", Check::ReadOnly, "", Measured },
});

constexpr auto kReported =
    std::to_array<std::string_view>({ "STAT", "RATE", "RRAT", "TXRT", "TXBT", "RXBT", "RETX", "DROP", "OOPS" });

/// In the order of the counters.
constexpr auto kCounted = std::to_array<std::string_view>({ "TXBT", "RXBT", "RETX", "DROP", "OOPS" });

constexpr double kHeaderBytes = 28; // IP and UDP
constexpr double kReportBytes = 6;  // of reports from the far end for every packet
constexpr double kLossRate = 2e-3;  // share of packets lost in the network
constexpr double kDisorderRate = 1e-3;

QByteArray whole(double number) { return QByteArray::number(qint64(number)); }

} // namespace

TmoipStreamUnit::TmoipStreamUnit(int card, int number, quint32 seed, QObject *parent)
    : ChannelUnit("TM" + QByteArray::number(card) + '-' + QByteArray::number(number), kRows, kReported, parent)
    , m_number(number)
    , m_noise(seed)
{
}

void TmoipStreamUnit::step(double bitRate, bool networkIsUp, double seconds)
{
    m_bitRate = 0;
    if (!isOn("FLOW")) {
        m_status = "No Flow";
    } else if (!networkIsUp) {
        m_status = "No Link";
    } else if (bitRate <= 0) {
        m_status = "No Clock";
    } else {
        // Only the reliable protocol gets confirmations from the far end.
        m_status = isReliable() ? "Ok" : "Transmitting";
        m_bitRate = bitRate;
    }
    count(packetRate() * seconds);
}

void TmoipStreamUnit::loseVolatileState()
{
    m_counters.fill(0);
    ChannelUnit::loseVolatileState();
}

bool TmoipStreamUnit::isReliable() const { return value("PROT") == "1"; }

double TmoipStreamUnit::packetRate() const { return m_bitRate / 8 / (packetSize() - kHeaderBytes); }

void TmoipStreamUnit::count(double packets)
{
    m_counters[BytesSent] += packets * packetSize();
    m_counters[BytesReceived] += packets * kReportBytes;
    if (m_noise.random().generateDouble() < packets * kLossRate) {
        m_counters[BytesResent] += isReliable() ? packetSize() : 0;
        m_counters[Dropped] += isReliable() ? 0 : 1;
    }
    if (m_noise.random().generateDouble() < packets * kDisorderRate)
        m_counters[OutOfOrder] += 1;
}

QByteArray TmoipStreamUnit::measure(const SettingRow &row) const
{
    if (row.mnemonic == "STAT")
        return m_status;
    if (row.mnemonic == "RATE")
        return whole(m_bitRate);
    if (row.mnemonic == "TXRT")
        return whole(packetRate() * packetSize() * 8);
    if (row.mnemonic == "RRAT")
        return whole(packetRate() * kReportBytes * 8);
    const auto *const counted = std::find(kCounted.begin(), kCounted.end(), row.mnemonic);
    return whole(m_counters.at(size_t(counted - kCounted.begin())));
}

} // namespace sim
