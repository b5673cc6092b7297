#pragma once

#include <QString>

namespace Ui {
class ReceiverPanel;
}

/// The part of a receiver's panel that shows how its frequency offset is controlled: the loop stress of the automatic
/// control, or a slider for the offset in kHz that the operator sets. Values are wire text.
class OffsetDisplay
{
public:
    explicit OffsetDisplay(const Ui::ReceiverPanel &form) : ui(form) {}

    void showMode(const QString &AFC) const;
    void showManualOffset(const QString &AFCM) const;
    /// Shows what the operator sets the slider to.
    void showSliderOffset(int kilohertz) const;
    void showStress(const QString &AFC, const QString &RLST) const;
    void showLoopLock(const QString &AFC, const QString &MAFL) const;

private:
    const Ui::ReceiverPanel &ui;
};
