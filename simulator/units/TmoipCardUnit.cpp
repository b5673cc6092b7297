#include "simulator/units/TmoipCardUnit.h"

#include <QDateTime>

#include <algorithm>
#include <array>

namespace sim {

namespace {

constexpr auto kRows = std::to_array<SettingRow>({
    { "NAME", Check::Text, "TMoIP", Stored },
    { "ADDR", Check::Ipv4, "192.168.1.50" },
    { "MASK", Check::Ipv4, "255.255.255.0" },
    { "GWAY", Check::Ipv4, "192.168.1.1" },
    { "PORT", Check::Index, "5000", Plain, 1500, 65535 },
    { "COMT", Check::Action },
    { "TSRC", Check::Index, "0", Plain, 0, 1 },
    { "NTPS", Check::Ipv4, "192.168.1.2" },
    { "IREV", Check::ReadOnly, "2.1" },
    { "CHAN", Check::ReadOnly, "3" },
    { "TIME", Check::ReadOnly, "", Measured },
    { "IRIG", Check::ReadOnly, "", Measured },
    { "PHYS", Check::ReadOnly, "", Measured },
    { "IEBS", Check::ReadOnly, "", Measured },
    { "IEBR", Check::ReadOnly, "", Measured },
});

constexpr auto kReported = std::to_array<std::string_view>({ "TIME", "IRIG", "PHYS", "IEBS", "IEBR" });
constexpr std::array kNetwork{ "ADDR", "MASK", "GWAY", "PORT" };

constexpr int kStreams = 3;
constexpr double kNetworkDownSeconds = 1.5;
constexpr double kSearchSeconds = 3;

} // namespace

TmoipCardUnit::TmoipCardUnit(int number, const std::function<quint32(int stream)> &seed, QObject *parent)
    : ChannelUnit("TM" + QByteArray::number(number) + "-0", kRows, kReported, parent)
    , m_number(number)
{
    for (int stream = 1; stream <= kStreams; ++stream)
        m_streams.push_back(std::make_unique<TmoipStreamUnit>(number, stream, seed(stream)));
    commit();
}

QList<ChannelUnit *> TmoipCardUnit::units()
{
    QList<ChannelUnit *> units{ this };
    for (const auto &stream : m_streams)
        units.append(stream.get());
    return units;
}

void TmoipCardUnit::commit()
{
    m_inForce.clear();
    for (const char *setting : kNetwork)
        m_inForce.append(value(setting));
    m_networkDown = kNetworkDownSeconds;
}

void TmoipCardUnit::step(const std::function<double(int stream)> &bitRate, double seconds)
{
    m_seconds += seconds;
    m_networkDown = std::max(0.0, m_networkDown - seconds);
    m_searching = std::max(0.0, m_searching - seconds);
    for (const auto &stream : m_streams)
        stream->step(bitRate(stream->number()), m_networkDown <= 0, seconds);
}

void TmoipCardUnit::loseVolatileState()
{
    ChannelUnit::loseVolatileState();
    for (size_t index = 0; index < kNetwork.size(); ++index) {
        [[maybe_unused]] const bool taken = change(kNetwork.at(index), m_inForce.at(qsizetype(index)));
    }
    m_seconds = 0;
    m_networkDown = kNetworkDownSeconds;
    m_searching = kSearchSeconds;
}

bool TmoipCardUnit::perform(const SettingRow &, const QByteArray &value)
{
    if (value != "1")
        return false;
    commit();
    return true;
}

void TmoipCardUnit::applied(const SettingRow &row)
{
    if (row.name() == "TSRC")
        m_searching = kSearchSeconds;
}

QByteArray TmoipCardUnit::measure(const SettingRow &row) const
{
    if (row.name() == "TIME")
        return time();
    if (row.name() == "IRIG")
        return m_searching > 0 ? "Searching" : "Locked";
    if (row.name() == "PHYS")
        return m_networkDown > 0 ? "Down" : "Up";
    double bytes = 0;
    for (const auto &stream : m_streams)
        bytes += row.name() == "IEBS" ? stream->bytesSent() : stream->bytesReceived();
    return QByteArray::number(qint64(bytes));
}

/// Day of the year and time, as in time codes. Simulated time begins at noon on the third of May.
QByteArray TmoipCardUnit::time() const
{
    static const QDateTime start(QDate(2026, 5, 3), QTime(12, 0), Qt::UTC);
    const QDateTime now = start.addMSecs(qint64(m_seconds * 1000));
    return QByteArray::number(now.date().dayOfYear()) + now.toString(QStringLiteral(":HH:mm:ss")).toLatin1();
}

} // namespace sim
