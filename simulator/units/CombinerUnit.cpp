#include "simulator/units/CombinerUnit.h"

#include "simulator/radio/AgcOutput.h"

#include <algorithm>
#include <cmath>

namespace sim {

namespace {

constexpr auto kRows = std::to_array<SettingRow>({
    { "NAME", Check::Text, "Combiner", Stored },
    { "SLAVE", Check::ReadOnly, "0", Volatile },
    { "CVMD", Check::Index, "0", Stored, 0, 1 },
    { "CMOD", Check::Index, "0", Stored, 0, 2 },
    { "IFLS", Check::ReadOnly, "500 kHz,1 MHz,2 MHz,5 MHz,10 MHz,20 MHz,40 MHz" },
    { "IFBW", Check::Own, "4", Stored },
    { "AIFB", Check::OnOff, "0", Stored },
    { "CHZC", Check::OnOff, "0", Stored },
    { "CHZ1", Check::OnOff, "0", Stored },
    { "CHZ2", Check::OnOff, "0", Stored },
    { "SLPA", Check::Index, "1", Stored, 0, 2 },
    { "SLPB", Check::Index, "2", Stored, 0, 2 },
    { "POLA", Check::Index, "0", Stored, 0, 1 },
    { "POLB", Check::Index, "0", Stored, 0, 1 },
    { "IMPA", Check::Index, "0", Stored, 0, 1 },
    { "IMPB", Check::Index, "0", Stored, 0, 1 },
    { "ABAL", Check::Range, "0", Stored, -20, 20 }, // dB added to channel 2
    { "CAMF", Check::Index, "0", Stored, 0, 3 },
    { "CAMP", Check::Index, "1", Stored, 0, 1 },
    { "GCZV", Check::Range, "0", Stored, -5, 5 }, // V added to the combined test point
    { "CLCK", Check::ReadOnly, "0", Measured },
    { "CLCS", Check::ReadOnly, "0", Measured },
    { "AGCA", Check::ReadOnly, "0", Measured },
    { "AGCB", Check::ReadOnly, "0", Measured },
    { "CH1IN", Check::ReadOnly, "0.00", Measured },
    { "CH1OUT", Check::ReadOnly, "0.00", Measured },
    { "CH2IN", Check::ReadOnly, "0.00", Measured },
    { "CH2OUT", Check::ReadOnly, "0.00", Measured },
    { "TP2", Check::ReadOnly, "0.00", Measured },
    { "TP4", Check::ReadOnly, "0.00", Measured },
});

constexpr auto kReported = std::to_array<std::string_view>(
    { "CLCK", "CLCS", "AGCA", "AGCB", "CH1IN", "CH1OUT", "CH2IN", "CH2OUT", "TP2", "TP4" });

constexpr double kDecibelsPerVolt = 20; // at the test points

double powerSum(double first, double second)
{
    return 10 * std::log10(std::pow(10.0, first / 10) + std::pow(10.0, second / 10));
}

} // namespace

CombinerUnit::CombinerUnit(QObject *parent) : ChannelUnit("C1", kRows, kReported, parent) {}

std::optional<IfSignal> CombinerUnit::output() const
{
    const int mode = readIndex(value("CMOD"));
    return mode == 0 ? combined() : m_inputs.at(size_t(mode - 1)).carrier;
}

bool CombinerUnit::accepts(const SettingRow &, const QByteArray &value) const { return isInList("IFLS", value); }

void CombinerUnit::applied(const SettingRow &row)
{
    if (row.name() == "CHZ1" || row.name() == "CHZ2") {
        const size_t input = row.name().back() == '1' ? 0 : 1;
        m_zeroVolts.at(input) = isOn(row.name()) ? inputVolts(input) : 0;
    } else if (row.name() == "CHZC") {
        m_zeroLevel = level();
    }
}

QByteArray CombinerUnit::measure(const SettingRow &row) const
{
    const QByteArrayView name = row.name();
    const bool first = m_inputs[0].carrier.has_value();
    const bool second = m_inputs[1].carrier.has_value();
    if (name == "CLCK")
        return flag(first || second);
    if (name == "CLCS")
        return first == second ? "0" : first ? "1" : "2";
    if (name.startsWith("AGC"))
        return agcOutput(row, level(), zeroLevel());
    if (name == "TP2")
        return decimal(outputVolts(0) - outputVolts(1), 2);
    if (name == "TP4")
        return decimal(combinedVolts(), 2);
    const size_t input = name[2] == '1' ? 0 : 1;
    return decimal(name.endsWith("IN") ? inputVolts(input) : outputVolts(input), 2);
}

std::optional<IfSignal> CombinerUnit::combined() const
{
    const auto &[first, second] = m_inputs;
    if (!first.carrier || !second.carrier)
        return first.carrier ? first.carrier : second.carrier;
    const bool firstLeads = first.carrier->noiseDistance >= second.carrier->noiseDistance;
    IfSignal signal = firstLeads ? *first.carrier : *second.carrier;
    // Only carriers of the same emission add up; of two different ones the stronger is used.
    if (first.carrier->mode == second.carrier->mode && first.carrier->rate == second.carrier->rate)
        signal.noiseDistance = powerSum(first.carrier->noiseDistance, second.carrier->noiseDistance);
    return signal;
}

double CombinerUnit::level() const { return std::max(m_inputs[0].level, m_inputs[1].level); }

double CombinerUnit::zeroLevel() const { return isOn("CHZC") ? m_zeroLevel : AgcOutput::kReference; }

double CombinerUnit::inputVolts(size_t input) const
{
    const double balance = input == 1 ? value("ABAL").toDouble() : 0;
    return (m_inputs.at(input).level + balance - AgcOutput::kReference) / kDecibelsPerVolt;
}

double CombinerUnit::outputVolts(size_t input) const { return inputVolts(input) - m_zeroVolts.at(input); }

double CombinerUnit::combinedVolts() const
{
    return (level() - zeroLevel()) / kDecibelsPerVolt + value("GCZV").toDouble();
}

} // namespace sim
