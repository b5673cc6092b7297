#pragma once

#include "Tuner.h"
#include "Unit.h"

#include <QByteArrayView>

class RadioScene;

/// A receiver, "R1" or "R2": its settings steer a `Tuner`, whose detectors become its status values.
class ReceiverUnit : public Unit
{
    Q_OBJECT

public:
    /// `number` 1 or 2.
    explicit ReceiverUnit(int number, QObject *parent = nullptr);

    /// Passes simulated time.
    void step(const RadioScene &scene, double seconds);
    /// Sends every status value unprompted.
    void reportStatus();
    /// The chassis' slaving mode, which the receiver shows as its own.
    void setSlaving(const QByteArray &mode);
    /// Level in dBm as the AGC holds it.
    [[nodiscard]] double agcLevel() const { return m_tuner.agcLevel(); }

protected:
    [[nodiscard]] bool accepts(const SettingRow &row, const QByteArray &value) const override;
    void applied(const SettingRow &row) override;
    [[nodiscard]] QByteArray measure(const SettingRow &row) const override;

private:
    [[nodiscard]] bool isTunable(const QByteArray &frequency) const;
    [[nodiscard]] Tuner::Controls controls() const;
    [[nodiscard]] double filterBandwidth() const;
    [[nodiscard]] bool isOn(QByteArrayView mnemonic) const { return value(mnemonic) == "1"; }
    /// dBm, or dB above the zero while AGC zero is on.
    [[nodiscard]] double shownLevel() const;
    /// Millivolts at AGC output "A" or "B".
    [[nodiscard]] int agcOutput(char output) const;

    Tuner m_tuner;
    double m_zeroLevel = 0;
};
