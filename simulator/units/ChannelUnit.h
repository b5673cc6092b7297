#pragma once

#include "simulator/units/Unit.h"

#include <string_view>

namespace sim {

/// A unit that processes a signal: it reports status values unsolicited and shows the slaving mode of the chassis.
class ChannelUnit : public Unit
{
    Q_OBJECT

public:
    /// `rows` and `reported`, the mnemonics of the status values, must outlive the unit.
    ChannelUnit(const QByteArray &address, std::span<const SettingRow> rows, std::span<const std::string_view> reported,
                QObject *parent = nullptr);

    /// Reports every status value.
    void reportStatus();
    /// Shows the slaving mode of the chassis as the channel's own.
    void setSlaving(const QByteArray &mode);

protected:
    /// Whether `position` is that of an item in `list`, a setting whose items are separated by commas.
    [[nodiscard]] bool isInList(QByteArrayView list, const QByteArray &position) const;
    [[nodiscard]] static QByteArray flag(bool on) { return on ? "1" : "0"; }
    /// Text with a fixed number of decimals, never a negative zero.
    [[nodiscard]] static QByteArray decimal(double number, int decimals);

    /// Millivolts at the analogue output that `row` is named after ("AGCA", "AGCB"), for a level and a zero in dBm,
    /// with the slope and the polarity set for that output.
    [[nodiscard]] QByteArray agcOutput(const SettingRow &row, double level, double zero) const;

private:
    std::span<const std::string_view> m_reported;
};

} // namespace sim
