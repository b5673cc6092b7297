#pragma once

#include "simulator/radio/Tuner.h"
#include "simulator/units/ChannelUnit.h"

namespace sim {

class RadioScene;

/// A receiver, "R1" or "R2": its settings control a `Tuner`, whose detectors give its status values.
class ReceiverUnit : public ChannelUnit
{
    Q_OBJECT

public:
    /// `number` 1 or 2.
    explicit ReceiverUnit(int number, QObject *parent = nullptr);

    [[nodiscard]] int number() const { return m_number; }
    /// Advances simulated time. `tape` is the playback signal, if there is a tape.
    void step(const RadioScene &scene, const std::optional<Tuner::Playback> &tape, double seconds);
    /// Tuned frequency in MHz.
    [[nodiscard]] double frequency() const { return value("FREQ").toDouble(); }
    /// Level in dBm held by the AGC loop.
    [[nodiscard]] double agcLevel() const { return m_tuner.agcLevel(); }
    /// The output carrier; nothing without one.
    [[nodiscard]] const std::optional<IfSignal> &output() const { return m_tuner.carrier(); }

protected:
    [[nodiscard]] bool accepts(const SettingRow &row, const QByteArray &value) const override;
    void applied(const SettingRow &row) override;
    [[nodiscard]] QByteArray measure(const SettingRow &row) const override;

private:
    [[nodiscard]] bool isTunable(const QByteArray &frequency) const;
    [[nodiscard]] Tuner::Controls controls() const;
    [[nodiscard]] double filterBandwidth() const;
    /// dBm, or dB above the zero while AGC zero is on.
    [[nodiscard]] double shownLevel() const;

    int m_number;
    Tuner m_tuner;
    double m_zeroLevel = 0;
};

} // namespace sim
