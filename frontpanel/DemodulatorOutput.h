#pragma once

#include "channels/DmdChan.h"
#include "controls/EntryField.h"

class QLabel;
class ValueSlider;

/// The data rate and the analog gain of one of a demodulator's two outputs, on its panel. Values are wire text.
class DemodulatorOutput
{
public:
    using Get = QString (DmdChan::*)() const;
    using Set = void (DmdChan::*)(const QString &);

    /// The controls, and what they stand for. All outlive the output.
    struct Parts
    {
        QLatin1StringView letter; ///< "A" or "B"
        ValueEdit *rate;
        ValueSlider *gain;
        QLabel *gainValue;
        QLatin1StringView rateMnemonic;
        Get getRate;
        Set setRate;
        Set setGain;
    };

    DemodulatorOutput() = default;
    /// @param isGainInDecibels else it is a percentage of the full scale
    DemodulatorOutput(const Parts &parts, DmdChan *channel, bool isGainInDecibels);

    [[nodiscard]] QLatin1StringView letter() const { return m_parts.letter; }

    void DisplayDataRate(const QString &value) const { m_rate.show(value); }
    void DisplayVideoGain(const QString &value) const;
    /// Shows the confirmed rate instead of a half-typed one.
    void restore() const { m_rate.giveUp(); }

    /// Sends the gain of the slider.
    void chooseGain(int value) const;
    /// The rate in the field in bit/s; nothing for the mark of an unknown one.
    [[nodiscard]] std::optional<double> enteredRate() const;
    /// Sends an accepted rate.
    void takeRate(double rate) const;
    /// Shows the confirmed rate again.
    void refuseRate() const { m_rate.end(true); }

private:
    [[nodiscard]] QString gainText(const QString &value) const;

    Parts m_parts{};
    DmdChan *m_channel = nullptr;
    bool m_isGainInDecibels = false;
    EntryField m_rate;
};
