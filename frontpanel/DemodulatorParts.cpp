#include "frontpanel/DemodulatorParts.h"

#include "channels/DemodulationMode.h"
#include "controls/OnOff.h"
#include "ui_DemodulatorPanel.h"

namespace {

constexpr int kNumberWithoutOffset = 3; // the third panel never shows its frequency offset

void setVisible(std::initializer_list<QWidget *> parts, bool visible)
{
    for (QWidget *part : parts)
        part->setVisible(visible);
}

} // namespace

void DemodulatorParts::setFamilies(const CardFamilies &families)
{
    m_families = families;
    const bool showsFilter = choosesVideoFilter() && !(isPlain() && m_families.hasK412WCard);
    setVisible({ ui.lblVFBW, ui.cboVFBW }, showsFilter);
    setVisible({ ui.lblAnalogBWA, ui.lblAnalogBWAVal }, !choosesVideoFilter());
    setVisible({ ui.lblAnalogPol, ui.cboAnalogPol }, isPlain() && showsFilter);
    if (isPlain())
        setVisible({ ui.lblInputSource, ui.cboInputSource, ui.lblOutputMode, ui.cboOutputMode, ui.frameAutoSettings,
                     ui.lblDQM, ui.cboDQM, ui.lblAE, ui.cboADEQ, ui.btnAdvanced, ui.lblAnalogALevel,
                     ui.lblAnalogAVoltage, ui.lblDataRateA, ui.lineDataRateA, ui.lblDerandomizer, ui.cboDerandomizer,
                     ui.lblBitSync, ui.frameOffsetPeak },
                   false);
}

void DemodulatorParts::ShowHideControls(const QString &DMOD, const QString &VCFG) const
{
    using Mode = DemodulationMode;
    const Mode *const mode = Mode::withCode(DMOD);
    const Mode::Parts without = mode ? mode->without : Mode::Parts();
    const bool digital = isOn(VCFG);
    const auto has = [without](Mode::Part part) { return !without.testFlag(part); };

    ShowAnalogA(has(Mode::DigitalAnalogA) || !digital);
    ShowAnalogB(has(Mode::AnalogB) && (has(Mode::DigitalAnalogB) || !digital));
    ShowDataRateB(has(Mode::DataRateB));
    ShowPeakDev(has(Mode::PeakDev));
    ShowFreqOffset(has(Mode::FreqOffset) && m_number != kNumberWithoutOffset);
    ui.checkBoxAutoBW->setEnabled(has(Mode::AutoBW));
    ui.checkBoxAutoSweepRange->setEnabled(has(Mode::AutoSweepRange));
    ui.checkBoxAutoStepSize->setEnabled(has(Mode::AutoStepSize));
    ui.checkBoxAutoModIndex->setEnabled(has(Mode::AutoModIndex));
    setVisible({ ui.lblDemod, ui.lblDemodmark }, has(Mode::DemodLamp));
    setVisible({ ui.lblBitSync, ui.lblBitSyncmark }, has(Mode::BitSyncLamp) || !isPlain());
}

void DemodulatorParts::ShowAnalogA(bool show) const { ui.frameAnalogA->setVisible(show); }

void DemodulatorParts::ShowAnalogB(bool show) const { ui.frameAnalogB->setVisible(show); }

void DemodulatorParts::ShowDataRateB(bool show) const { setVisible({ ui.lblDataRateB, ui.lineDataRateB }, show); }

void DemodulatorParts::ShowPeakDev(bool show) const { setVisible({ ui.lblPeakDev, ui.lblPeakDevVal }, show); }

void DemodulatorParts::ShowFreqOffset(bool show) const { setVisible({ ui.lblFreqOffset, ui.lblFreqOffsetVal }, show); }
