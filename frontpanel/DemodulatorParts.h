#pragma once

#include "inventory/CardFamilies.h"

#include <QString>

namespace Ui {
class DemodulatorPanel;
}

/// Which parts of a demodulator's panel apply: those that the chassis' cards have, and those that the mode uses.
class DemodulatorParts
{
public:
    /// @param number position of the panel in the window from 1
    DemodulatorParts(const Ui::DemodulatorPanel &form, int number) : ui(form), m_number(number) {}

    /// Shows the parts that the cards have.
    void setFamilies(const CardFamilies &families);
    [[nodiscard]] const CardFamilies &families() const { return m_families; }
    /// Whether there is no card with more than the basic settings.
    [[nodiscard]] bool isPlain() const { return !m_families.hasQLN424Card && !m_families.hasK3050OrK3060Card; }
    [[nodiscard]] bool choosesVideoFilter() const { return isPlain() || m_families.hasK3050OrK3060Card; }

    /// Shows and enables what applies to a mode and an output configuration, given as wire text.
    void ShowHideControls(const QString &DMOD, const QString &VCFG) const;

private:
    void ShowAnalogA(bool show) const;
    void ShowAnalogB(bool show) const;
    void ShowDataRateB(bool show) const;
    void ShowPeakDev(bool show) const;
    void ShowFreqOffset(bool show) const;

    const Ui::DemodulatorPanel &ui;
    int m_number;
    CardFamilies m_families;
};
