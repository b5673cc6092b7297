#include "simulator/units/SystemUnit.h"

#include "simulator/units/PresetKeeper.h"

#include <QTime>

#include <algorithm>
#include <array>
#include <cmath>

namespace sim {

namespace {

constexpr double kSecondsPerDay = 86400;
const QString kTimeFormat = QStringLiteral("HH:mm:ss");

constexpr auto kRows = std::to_array<SettingRow>({
    { "TRON", Check::Own, "OFF", Volatile },
    { "VER", Check::ReadOnly, "ZIRVO-3.4.1" },
    { "VERTSKB", Check::ReadOnly, "KB-1.7.0" },
    { "SYSID", Check::Text, "", Volatile },
    { "CLST", Check::ReadOnly },
    { "TLST", Check::ReadOnly },
    { "NAME", Check::Text, "ZIRVO", Stored },
    { "SLAVE", Check::Index, "0", Stored | Volatile, 0, 2 },
    { "TMRF", Check::OnOff, "1", Stored },
    { "TIME", Check::Own, "", Measured },
    { "LOGC", Check::OnOff, "0", Stored },
    { "LAGC", Check::ReadOnly, "0.0" },
    { "SYSOPT", Check::ReadOnly },
    { "ABSSI", Check::OnOff, "0", Stored },
    { "PLIST", Check::ReadOnly, "", Measured },
    { "SDM1", Check::Own, "3", Stored },
    { "SDM2", Check::Own, "3", Stored },
    { "SDM3", Check::Own, "3", Stored },
    { "STORE", Check::Action },
    { "RESTORE", Check::Action },
    { "DELPR", Check::Action },
    { "REMOTE", Check::OnOff, "0", Volatile },
});

} // namespace

SystemUnit::SystemUnit(PresetKeeper &presets, QObject *parent) : Unit("U0", kRows, parent), m_presets(presets) {}

void SystemUnit::step(double seconds) { m_clock = std::fmod(m_clock + seconds, kSecondsPerDay); }

bool SystemUnit::isReporting() const { return value("TRON") == "ON"; }

bool SystemUnit::isLogging() const { return value("LOGC") == "1"; }

void SystemUnit::logAgc(double level)
{
    if (change("LAGC", QByteArray::number(level, 'f', 1)))
        report("LAGC");
}

bool SystemUnit::listsTmoip(QByteArrayView card) const
{
    const QByteArrayList items = value("TLST").split(',');
    return std::any_of(items.begin(), items.end(),
                       [card](const QByteArray &item) { return item.trimmed().split(' ').first() == card; });
}

void SystemUnit::loseVolatileState()
{
    m_clock = 0;
    Unit::loseVolatileState();
}

bool SystemUnit::accepts(const SettingRow &row, const QByteArray &value) const
{
    if (row.name() == "TRON")
        return value == "ON" || value == "OFF";
    if (row.name().startsWith("SDM"))
        return value.size() == 1 && QByteArrayView("123ABC").contains(value.front());
    return QTime::fromString(QString::fromLatin1(value), kTimeFormat).isValid();
}

bool SystemUnit::perform(const SettingRow &row, const QByteArray &value)
{
    if (row.name() == "STORE")
        return m_presets.store(value);
    if (row.name() == "RESTORE")
        return m_presets.restore(value);
    return m_presets.remove(value);
}

void SystemUnit::applied(const SettingRow &row)
{
    if (row.name() == "SLAVE")
        Q_EMIT slavingChanged(value("SLAVE"));
    else if (row.name() == "TIME")
        m_clock = QTime::fromString(QString::fromLatin1(value("TIME")), kTimeFormat).msecsSinceStartOfDay() / 1000.0;
}

QByteArray SystemUnit::measure(const SettingRow &row) const
{
    if (row.name() == "PLIST")
        return m_presets.listing();
    return QTime::fromMSecsSinceStartOfDay(int(m_clock * 1000)).toString(kTimeFormat).toLatin1();
}

} // namespace sim
