#pragma once

#include "simulator/radio/BertCounter.h"
#include "simulator/radio/Demodulator.h"
#include "simulator/units/ChannelUnit.h"

namespace sim {

/// A demodulator, "D1" to "D3": its settings control a `Demodulator`, whose loops give its status values. Some of its
/// settings live in registers that clients read and write by number.
class DemodulatorUnit : public ChannelUnit
{
    Q_OBJECT

public:
    /// What goes out on the eye link; the numbers are the ones of "DSDM".
    enum class EyeOutput { Off, Constellation, EyePattern, SerialData };

    /// `number` 1 to 3. Older cards also accept three settings by name that newer cards have in registers only.
    DemodulatorUnit(int number, bool olderCard, quint32 seed, QObject *parent = nullptr);

    /// Advances simulated time with the carrier of the selected source.
    void step(const std::optional<IfSignal> &input, double seconds);
    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] EyeOutput eyeOutput() const { return EyeOutput(readIndex(value("DSDM"))); }
    [[nodiscard]] const Demodulator &demodulator() const { return m_demodulator; }

    [[nodiscard]] std::optional<QByteArray> lookUp(QByteArrayView mnemonic, const QByteArray &argument) const override;
    [[nodiscard]] QByteArray reply(QByteArrayView mnemonic) override;
    [[nodiscard]] QByteArrayList values() override;

protected:
    [[nodiscard]] bool accepts(const SettingRow &row, const QByteArray &value) const override;
    [[nodiscard]] bool perform(const SettingRow &row, const QByteArray &value) override;
    void applied(const SettingRow &row) override;
    [[nodiscard]] QByteArray measure(const SettingRow &row) const override;

private:
    [[nodiscard]] const DemodulationMode *mode() const;
    [[nodiscard]] bool isOffered(const QByteArray &code) const;
    void keepRatesInRange();
    void writeDirect(QByteArrayView mnemonic);
    [[nodiscard]] QByteArray readDirect(QByteArrayView mnemonic) const;
    [[nodiscard]] QByteArray measureLock(QByteArrayView mnemonic) const;
    [[nodiscard]] QByteArray measureBert(QByteArrayView mnemonic) const;

    int m_number;
    Demodulator m_demodulator;
    BertCounter m_bert;
};

} // namespace sim
