#pragma once

#include "simulator/units/Unit.h"

namespace sim {

class PresetKeeper;

/// The chassis as a whole, "U0".
class SystemUnit : public Unit
{
    Q_OBJECT

public:
    /// `presets` must outlive the unit.
    explicit SystemUnit(PresetKeeper &presets, QObject *parent = nullptr);

    /// Advances the clock of the chassis.
    void step(double seconds);
    /// Whether clients want unsolicited reports.
    [[nodiscard]] bool isReporting() const;
    [[nodiscard]] bool isLogging() const;
    /// The input of demodulator `number`: "1" or "2" a receiver, "3" the combiner, "A" to "C" an external input.
    [[nodiscard]] QByteArray source(int number) const { return value("SDM" + QByteArray::number(number)); }
    /// Stores the AGC level (dBm) for the log and reports it.
    void logAgc(double level);
    /// Whether the list of telemetry-over-IP cards contains `card`.
    [[nodiscard]] bool listsTmoip(QByteArrayView card) const;
    void loseVolatileState() override;

Q_SIGNALS:
    void slavingChanged(const QByteArray &mode);

protected:
    [[nodiscard]] bool accepts(const SettingRow &row, const QByteArray &value) const override;
    [[nodiscard]] bool perform(const SettingRow &row, const QByteArray &value) override;
    void applied(const SettingRow &row) override;
    [[nodiscard]] QByteArray measure(const SettingRow &row) const override;

private:
    PresetKeeper &m_presets;
    double m_clock = 0; // seconds of the day
};

} // namespace sim
