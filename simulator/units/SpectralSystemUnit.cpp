#include "simulator/units/SpectralSystemUnit.h"

#include <array>

namespace sim {

namespace {

constexpr auto kRows = std::to_array<SettingRow>({
    { "TRON", Check::Own, "OFF", Volatile },
    { "VER", Check::ReadOnly, "SPEC-1.2.0" },
    { "VERTSKB", Check::ReadOnly, "KB-1.7.0" },
    { "SYSID", Check::Text, "", Volatile },
    { "CLST", Check::ReadOnly },
    { "TLST", Check::ReadOnly },
    { "NAME", Check::Text, "Spectral" },
    { "SLAVE", Check::Index, "0", Volatile, 0, 2 },
    { "TMRF", Check::OnOff, "1" },
    { "SYSOPT", Check::ReadOnly },
    { "ABSSI", Check::OnOff, "0" },
});

} // namespace

SpectralSystemUnit::SpectralSystemUnit(QObject *parent) : Unit("U0", kRows, parent) {}

bool SpectralSystemUnit::accepts(const SettingRow &, const QByteArray &value) const
{
    return value == "ON" || value == "OFF";
}

} // namespace sim
