#include "simulator/units/ReceiverUnit.h"

#include "simulator/radio/AgcOutput.h"
#include "simulator/radio/RadioScene.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sim {

namespace {

// A list comes before the settings that are checked against it.
constexpr auto kRows = std::to_array<SettingRow>({
    { "NAME", Check::Text, "Receiver", Stored },
    { "SLAVE", Check::ReadOnly, "0", Volatile },
    { "FLST", Check::ReadOnly, "2395.5 2200.5,1485.5 1435.5" },
    { "FREQ", Check::Own, "2250.5", Stored },
    { "IFLS", Check::ReadOnly, "500 kHz,1 MHz,2 MHz,5 MHz,10 MHz,20 MHz,40 MHz" },
    { "IFBW", Check::Own, "3", Stored },
    { "AIFB", Check::OnOff, "0", Stored },
    { "CIFS", Check::Index, "0", Stored, 0, 1 },
    { "AGCF", Check::OnOff, "0", Stored },
    { "AGCZ", Check::OnOff, "0", Stored },
    { "AGCT", Check::Index, "1", Stored, 0, 4 },
    { "AFC", Check::Index, "1", Stored, 0, 4 },
    { "AFCM", Check::Range, "0", Stored, -200, 200 },
    { "SLPA", Check::Index, "1", Stored, 0, 2 },
    { "SLPB", Check::Index, "2", Stored, 0, 2 },
    { "POLA", Check::Index, "0", Stored, 0, 1 },
    { "POLB", Check::Index, "0", Stored, 0, 1 },
    { "IMPA", Check::Index, "0", Stored, 0, 1 },
    { "IMPB", Check::Index, "0", Stored, 0, 1 },
    { "CAMP", Check::Index, "1", Stored, 0, 1 },
    { "CAMF", Check::Index, "0", Stored, 0, 3 },
    { "AMIP", Check::Index, "0", Stored, 0, 1 },
    { "PLYB", Check::OnOff, "0", Stored },
    { "ACFE", Check::OnOff, "0", Stored },
    { "ANCF", Check::Range, "-20", Stored, -100, 100 },
    { "CINP", Check::Index, "0", Stored, 0, 1 },
    { "CIF1", Check::Index, "0", Stored, 0, 1 },
    { "CATN", Check::Range, "0", Stored, 0, 60 },
    { "MANG", Check::Range, "0", Stored, 0, 120 },
    // Service values: stored and returned, without effect on the simulation.
    { "MVAL", Check::Text, "0" },
    { "LSCI", Check::Text, "0" },
    { "LSCL", Check::Text, "0" },
    { "AFCC", Check::Text, "0" },
    { "CVAL", Check::Text, "0" },
    { "CRSI", Check::Text, "0" },
    { "IFGC", Check::Text, "0" },
    { "IFGCM", Check::Text, "0" },
    { "SYNL", Check::ReadOnly, "0", Measured },
    { "SSLV", Check::ReadOnly, "0", Measured },
    { "MAFL", Check::ReadOnly, "0", Measured },
    { "RLST", Check::ReadOnly, "0", Measured },
    { "AGCA", Check::ReadOnly, "0", Measured },
    { "AGCB", Check::ReadOnly, "0", Measured },
    { "CARL", Check::ReadOnly, "0", Measured },
    { "RRSSI", Check::ReadOnly, "0", Measured },
});

constexpr auto kReported = std::to_array<std::string_view>({ "SYNL", "SSLV", "MAFL", "RLST", "AGCA", "AGCB" });

constexpr std::array<double, 5> kAgcSeconds{ 1.0, 0.1, 0.01, 0.001, 0.0001 };
constexpr std::array<double, 5> kLoopBandwidths{ 100, 20, 5, 1, 0 }; // Hz; the last is manual tuning
constexpr double kEdgeTolerance = 1e-6;                              // MHz: band edges are not exact in binary

template <typename T, std::size_t Size>
T entry(const std::array<T, Size> &list, const QByteArray &position)
{
    return list.at(size_t(std::clamp(readIndex(position), 0, int(Size) - 1)));
}

/// Bandwidth in MHz of a filter name such as "500 kHz"; 0 if the text is not one.
double megahertz(const QByteArray &name)
{
    const qsizetype blank = name.indexOf(' ');
    double number = 0;
    if (blank < 0 || !readDecimal(QByteArrayView(name).first(blank), number))
        return 0;
    return name.mid(blank + 1) == "kHz" ? number / 1000 : number;
}

} // namespace

ReceiverUnit::ReceiverUnit(int number, QObject *parent)
    : ChannelUnit('R' + QByteArray::number(number), kRows, kReported, parent)
    , m_number(number)
    , m_tuner(number - 1)
{
    m_tuner.setControls(controls());
}

void ReceiverUnit::step(const RadioScene &scene, const std::optional<Tuner::Playback> &tape, double seconds)
{
    m_tuner.step(scene, isOn("PLYB") ? tape : std::nullopt, seconds);
}

bool ReceiverUnit::accepts(const SettingRow &row, const QByteArray &value) const
{
    if (row.name() == "FREQ")
        return isTunable(value);
    return isInList("IFLS", value);
}

void ReceiverUnit::applied(const SettingRow &row)
{
    if (row.name() == "AGCZ" && isOn("AGCZ"))
        m_zeroLevel = m_tuner.level();
    m_tuner.setControls(controls());
}

QByteArray ReceiverUnit::measure(const SettingRow &row) const
{
    const QByteArrayView name = row.name();
    if (name == "SYNL")
        return flag(m_tuner.isSynthesizerLocked());
    if (name == "MAFL")
        return flag(m_tuner.isLoopLocked());
    if (name == "CARL")
        return flag(m_tuner.hasCarrier());
    if (name == "RLST")
        return QByteArray::number(qRound(m_tuner.loopStress()));
    if (name == "AGCA" || name == "AGCB")
        return agcOutput(row, m_tuner.agcLevel(), isOn("AGCZ") ? m_zeroLevel : AgcOutput::kReference);
    return decimal(name == "RRSSI" ? m_tuner.level() : shownLevel(), 1);
}

bool ReceiverUnit::isTunable(const QByteArray &frequency) const
{
    double wanted = 0;
    if (!readDecimal(frequency, wanted))
        return false;
    const QByteArrayList ranges = value("FLST").split(',');
    return std::any_of(ranges.begin(), ranges.end(), [wanted](const QByteArray &range) {
        const QByteArrayList bounds = range.split(' ');
        double upper = 0;
        double lower = 0;
        return bounds.size() == 2 && readDecimal(bounds.first(), upper) && readDecimal(bounds.last(), lower) &&
               wanted <= upper + kEdgeTolerance && wanted >= lower - kEdgeTolerance;
    });
}

Tuner::Controls ReceiverUnit::controls() const
{
    return { .frequency = frequency(),
             .bandwidth = filterBandwidth(),
             .agcSeconds = entry(kAgcSeconds, value("AGCT")),
             .agcFrozen = isOn("AGCF"),
             .loopBandwidth = entry(kLoopBandwidths, value("AFC")),
             .manualOffset = value("AFCM").toDouble() };
}

double ReceiverUnit::filterBandwidth() const
{
    const QByteArrayList names = value("IFLS").split(',');
    // If the list became shorter and the filter is gone, the widest one left is used.
    const int position = std::clamp(readIndex(value("IFBW")), 0, int(names.size()) - 1);
    const double bandwidth = megahertz(names.at(position));
    return bandwidth > 0 ? bandwidth : 1.0;
}

double ReceiverUnit::shownLevel() const
{
    if (isOn("AGCZ"))
        return m_tuner.level() - m_zeroLevel;
    return m_tuner.level() + (isOn("ACFE") ? value("ANCF").toDouble() : 0);
}

} // namespace sim
