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

    /// Passes simulated time: the chassis clock runs.
    void step(double seconds);
    /// Whether clients want unprompted reports.
    [[nodiscard]] bool isReporting() const;
    [[nodiscard]] bool isLogging() const;
    /// What demodulator `number` listens to: "1" or "2" a receiver, "3" the combiner, "A" to "C" a socket.
    [[nodiscard]] QByteArray source(int number) const { return value("SDM" + QByteArray::number(number)); }
    /// Takes the AGC level (dBm) that the log shows and reports it.
    void logAgc(double level);
    /// Whether the list of telemetry-over-IP cards names `card`.
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
