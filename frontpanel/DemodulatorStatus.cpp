#include "frontpanel/DemodulatorStatus.h"

#include "channels/DmdChan.h"
#include "controls/NumberText.h"
#include "controls/WidgetUpdate.h"
#include "ui_DemodulatorPanel.h"

using namespace Qt::StringLiterals;

namespace {

/// A number in a larger unit; any other text as it is.
QString scaledDown(const QString &value, double unit, int decimals)
{
    const auto number = NumberText::parse(value);
    return number ? NumberText::fixed(*number / unit, decimals) : value;
}

} // namespace

void DemodulatorStatus::update(const DmdChan &channel) const
{
    UpdateDLCK(channel.getDLCK());
    UpdateBLCK(channel.getBLCK());
    UpdateFOFF(channel.getFOFF());
    UpdatePDEV(channel.getPDEV());
    UpdateVLV1(channel.getVLV1());
}

void DemodulatorStatus::UpdateDLCK(const QString &value) const
{
    WidgetUpdate::lockLamp(ui.lblDemod, ui.lblDemodmark, value);
}

void DemodulatorStatus::UpdateBLCK(const QString &value) const
{
    WidgetUpdate::lockLamp(ui.lblBitSync, ui.lblBitSyncmark, value);
}

void DemodulatorStatus::UpdateFOFF(const QString &kilohertz) const
{
    WidgetUpdate::reading(ui.lblFreqOffsetVal, kilohertz, " KHz"_L1);
}

void DemodulatorStatus::UpdatePDEV(const QString &hertz) const
{
    WidgetUpdate::reading(ui.lblPeakDevVal, scaledDown(hertz, 1e6, 3), " MHz"_L1);
}

void DemodulatorStatus::UpdateVLV1(const QString &millivolts) const
{
    WidgetUpdate::reading(ui.lblAnalogAVoltage, scaledDown(millivolts, 1e3, 2), " V"_L1);
}
