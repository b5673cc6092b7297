#include "simulator/units/SelfTestUnit.h"

#include <array>

namespace sim {

namespace {

constexpr double kHighestRate = 40e6; // bits a second
constexpr double kWord = 65535;

constexpr auto kRows = std::to_array<SettingRow>({
    // carrier: MHz, dB, dBm
    { "CFRQ", Check::Range, "2250.5", Plain, 70, 6000 },
    { "CATT_1", Check::Range, "30", Plain, 0, 120 },
    { "CATT_2", Check::Range, "30", Plain, 0, 120 },
    // subcarrier and main deviation, kHz
    { "SCD1", Check::Range, "0", Plain, 0, 1000 },
    { "SCD2", Check::Range, "0", Plain, 0, 1000 },
    { "FMDV", Check::Range, "1750", Plain, 0, 20000 },
    { "UNBL", Check::Range, "1.0", Plain, 0.1, 10 },
    { "SCG1", Check::Index, "0", Plain, 0, 255 },
    { "SCG2", Check::Index, "0", Plain, 0, 255 },
    { "PNGN", Check::Index, "1", Plain, 0, 7 },
    { "CBND", Check::Index, "2", Plain, 0, 7 },
    { "CERR", Check::ReadOnly, "0" },
    { "SCR1", Check::Index, "64000", Plain, 100, kHighestRate },
    { "SCR2", Check::Index, "128000", Plain, 100, kHighestRate },
    { "PRNR", Check::Index, "5000000", Plain, 100, kHighestRate },
    { "APNR", Check::Index, "5000000", Plain, 100, kHighestRate },
    { "SCF1", Check::Range, "70", Plain, 0, 4000 },
    { "SCF2", Check::Range, "450", Plain, 0, 4000 },
    { "BSINT", Check::OnOff, "0" },
    { "CMOD", Check::Index, "0", Plain, 0, 17 },
    { "C1EN", Check::OnOff, "1" },
    { "C2EN", Check::OnOff, "0" },
    { "PCEN", Check::OnOff, "1" },
    { "IFSL", Check::Index, "0", Plain, 0, 1 },
    { "CPRN", Check::Index, "15", Plain, 0, 31 },
    { "CDLE", Check::Index, "0", Plain, 0, kWord },
    { "CREF", Check::OnOff, "0" },
    { "CPWR", Check::Range, "-50", Plain, -130, 0 },
    { "CEXT", Check::OnOff, "0" },
    { "CDSC", Check::OnOff, "1" },
    { "DDSF", Check::Range, "70", Plain, 0, 400 },
    { "NAME", Check::Text, "Self Test" },
    { "SLAVE", Check::ReadOnly, "0" },
    // °C of the card
    { "RTMP", Check::ReadOnly, "41" },
});

constexpr auto kReported = std::to_array<std::string_view>({ "RTMP" });

} // namespace

SelfTestUnit::SelfTestUnit(QObject *parent) : ChannelUnit("S1", kRows, kReported, parent) {}

} // namespace sim
