#include "simulator/units/ChannelUnit.h"

#include "simulator/radio/AgcOutput.h"

namespace sim {

ChannelUnit::ChannelUnit(const QByteArray &address, std::span<const SettingRow> rows,
                         std::span<const std::string_view> reported, QObject *parent)
    : Unit(address, rows, parent)
    , m_reported(reported)
{
}

void ChannelUnit::reportStatus()
{
    for (const std::string_view mnemonic : m_reported)
        report(QByteArrayView(mnemonic.data(), qsizetype(mnemonic.size())));
}

void ChannelUnit::setSlaving(const QByteArray &mode) { [[maybe_unused]] const bool taken = change("SLAVE", mode); }

bool ChannelUnit::isInList(QByteArrayView list, const QByteArray &position) const
{
    const int index = readIndex(position);
    return index >= 0 && index <= value(list).count(',');
}

QByteArray ChannelUnit::decimal(double number, int decimals)
{
    const QByteArray text = QByteArray::number(number, 'f', decimals);
    return text.toDouble() == 0 && text.startsWith('-') ? text.sliced(1) : text;
}

QByteArray ChannelUnit::agcOutput(const SettingRow &row, double level, double zero) const
{
    const char output = row.mnemonic.back();
    const int slope = readIndex(value(QByteArray("SLP") + output));
    return QByteArray::number(AgcOutput::millivolts(level, zero, slope, isOn(QByteArray("POL") + output)));
}

} // namespace sim
