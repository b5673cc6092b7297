#pragma once

#include "simulator/radio/IfSignal.h"
#include "simulator/units/ChannelUnit.h"

#include <array>

namespace sim {

/// The diversity combiner, "C1": it weights the carriers of both receivers by their distance from the noise.
class CombinerUnit : public ChannelUnit
{
    Q_OBJECT

public:
    static constexpr int kInputs = 2;

    /// What arrives from one receiver.
    struct Input
    {
        std::optional<IfSignal> carrier;
        double level = -120; ///< dBm as the receiver's AGC holds it
    };
    using Inputs = std::array<Input, kInputs>;

    explicit CombinerUnit(QObject *parent = nullptr);

    void step(const Inputs &inputs) { m_inputs = inputs; }
    /// The output carrier for the output mode that is set; nothing without one.
    [[nodiscard]] std::optional<IfSignal> output() const;

protected:
    [[nodiscard]] bool accepts(const SettingRow &row, const QByteArray &value) const override;
    void applied(const SettingRow &row) override;
    [[nodiscard]] QByteArray measure(const SettingRow &row) const override;

private:
    [[nodiscard]] std::optional<IfSignal> combined() const;
    /// Combined level in dBm, from the AGC levels.
    [[nodiscard]] double level() const;
    /// The combined level in dBm that corresponds to 0 V.
    [[nodiscard]] double zeroLevel() const;
    /// Volts at a test point for the AGC level of an input (0, 1), before and after its zero is subtracted.
    [[nodiscard]] double inputVolts(size_t input) const;
    [[nodiscard]] double outputVolts(size_t input) const;
    /// Volts of the combined level above its zero.
    [[nodiscard]] double combinedVolts() const;

    Inputs m_inputs;
    std::array<double, kInputs> m_zeroVolts{};
    double m_zeroLevel = 0;
};

} // namespace sim
