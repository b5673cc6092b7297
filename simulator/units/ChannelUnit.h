#pragma once

#include "simulator/units/Unit.h"

#include <string_view>

namespace sim {

/// A unit with a signal going through: it reports status values unprompted and shows the chassis' slaving mode.
class ChannelUnit : public Unit
{
    Q_OBJECT

public:
    /// `rows` and `reported`, the mnemonics of the status values, must outlive the unit.
    ChannelUnit(const QByteArray &address, std::span<const SettingRow> rows, std::span<const std::string_view> reported,
                QObject *parent = nullptr);

    /// Sends every status value unprompted.
    void reportStatus();
    /// The chassis' slaving mode, which the channel shows as its own.
    void setSlaving(const QByteArray &mode);

protected:
    /// Whether `position` names an item of a setting that is a list separated by commas.
    [[nodiscard]] bool isInList(QByteArrayView list, const QByteArray &position) const;
    [[nodiscard]] static QByteArray flag(bool on) { return on ? "1" : "0"; }
    /// With a fixed number of decimals, and never a negative zero.
    [[nodiscard]] static QByteArray decimal(double number, int decimals);

    /// Millivolts at the analogue output that `row` is named after ("AGCA", "AGCB"), for a level and a zero in dBm,
    /// with the slope and the polarity set for that output.
    [[nodiscard]] QByteArray agcOutput(const SettingRow &row, double level, double zero) const;

private:
    std::span<const std::string_view> m_reported;
};

} // namespace sim
