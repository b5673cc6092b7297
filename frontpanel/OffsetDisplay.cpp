#include "frontpanel/OffsetDisplay.h"

#include "controls/NumberText.h"
#include "controls/OnOff.h"
#include "controls/ValueText.h"
#include "controls/WidgetUpdate.h"
#include "ui_ReceiverPanel.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView kUnit{ " KHz" };

bool isManual(const QString &AFC) { return AFC == "4"_L1; }

bool isAutomatic(const QString &AFC)
{
    const auto mode = NumberText::parseWhole(AFC);
    return mode && *mode >= 0 && *mode <= 3;
}

} // namespace

void OffsetDisplay::showMode(const QString &AFC) const
{
    const bool manual = isManual(AFC);
    WidgetUpdate::text(ui.lblAFCAutoMan, manual ? u"Offset"_s : u"Loop Stress"_s);
    ui.sldrAFCM->setVisible(manual);
    if (manual) {
        WidgetUpdate::style(ui.lblRLSTval, u"background-color: rgb(229, 227, 225); color: #000000;"_s);
        WidgetUpdate::text(ui.lblRLSTval, ValueText::withUnit(ui.sldrAFCM->shownText(), kUnit));
        WidgetUpdate::text(ui.lblRLSTmark, {});
        WidgetUpdate::description(ui.lblRLSTval, {});
    } else if (!isAutomatic(AFC)) {
        WidgetUpdate::style(ui.lblRLSTval, {}); // whatever it shows
    }
}

void OffsetDisplay::showManualOffset(const QString &AFCM) const
{
    ui.sldrAFCM->showValue(AFCM);
    WidgetUpdate::text(ui.lblRLSTval, ValueText::withUnit(AFCM, kUnit));
}

void OffsetDisplay::showSliderOffset(int kilohertz) const
{
    WidgetUpdate::text(ui.lblRLSTval, QString::number(kilohertz) + kUnit);
}

void OffsetDisplay::showStress(const QString &AFC, const QString &RLST) const
{
    if (isAutomatic(AFC))
        WidgetUpdate::reading(ui.lblRLSTval, RLST, kUnit);
}

void OffsetDisplay::showLoopLock(const QString &AFC, const QString &MAFL) const
{
    if (!isAutomatic(AFC) || (!isOn(MAFL) && !isOff(MAFL)))
        return;
    const QString word = isOn(MAFL) ? u"in lock"_s : u"out of lock"_s;
    WidgetUpdate::style(ui.lblRLSTval, isOn(MAFL) ? u"background-color: rgb(229, 227, 225); color: #28c125;"_s
                                                  : u"background-color: rgb(229, 227, 225); color: #f11029;"_s);
    WidgetUpdate::text(ui.lblRLSTmark, word);
    WidgetUpdate::description(ui.lblRLSTval, word);
}
