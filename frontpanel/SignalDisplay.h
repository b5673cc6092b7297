#pragma once

#include <QString>

namespace Ui {
class ReceiverPanel;
}

/// The part of a receiver's panel that shows the signal strength: the bar, what it is measured against, and the lamp
/// for the carrier. Values are wire text.
class SignalDisplay
{
public:
    explicit SignalDisplay(const Ui::ReceiverPanel &form) : ui(form) {}

    /// Shows what the strength is measured against, and chooses the range of the bar.
    void showZero(const QString &AGCZ, const QString &ACFE) const;
    /// Follows the antenna's correction factor, which counts only without AGC zero.
    void showReference(const QString &AGCZ, const QString &ACFE) const;
    void showLevel(const QString &AGCZ, const QString &SSLV) const;

private:
    void showAbsolute(const QString &ACFE) const;
    void showReferenceText(const QString &text, const QString &style) const;

    const Ui::ReceiverPanel &ui;
};
