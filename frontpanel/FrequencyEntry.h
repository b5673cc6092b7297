#pragma once

#include <QString>

class DecimalSpinBox;
class RcvrChan;

/// The frequency of a receiver in its spin box, in MHz.
class FrequencyEntry
{
public:
    /// Both outlive this.
    void setChannel(RcvrChan *channel, DecimalSpinBox *box);

    /// Shows a reported frequency, unless one is half-typed.
    void show(const QString &FREQ) const;
    /// Shows the frequency in force instead of a half-typed one.
    void giveUp() const;
    /// Shows the frequency in force instead of a half-typed one, or the one that was sent and waits for its answer.
    void restore() const;
    /// Sends what the operator has entered. A step over the edge of a range leads to the next range; another frequency
    /// outside all ranges is given up.
    void tune(const QString &text) const;

private:
    void refuse(double frequency) const;

    RcvrChan *m_channel = nullptr;
    DecimalSpinBox *m_box = nullptr;
};
