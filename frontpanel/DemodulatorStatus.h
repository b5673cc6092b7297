#pragma once

#include <QString>

class DmdChan;

namespace Ui {
class DemodulatorPanel;
}

/// The part of a demodulator's panel that shows its status: the lock lamps, and the readings with their units.
class DemodulatorStatus
{
public:
    explicit DemodulatorStatus(const Ui::DemodulatorPanel &form) : ui(form) {}

    /// Shows the present status values of @p channel.
    void update(const DmdChan &channel) const;

private:
    void UpdateDLCK(const QString &value) const;
    void UpdateBLCK(const QString &value) const;
    void UpdateFOFF(const QString &kilohertz) const;
    void UpdatePDEV(const QString &hertz) const;
    void UpdateVLV1(const QString &millivolts) const;

    const Ui::DemodulatorPanel &ui;
};
