#include "frontpanel/SignalDisplay.h"

#include "controls/NumberText.h"
#include "controls/OnOff.h"
#include "controls/ValueText.h"
#include "controls/WidgetUpdate.h"
#include "ui_ReceiverPanel.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int kCarrierThreshold = 3; // dB above the AGC zero

const QString kPlainReference = u"color:#000000"_s;

} // namespace

void SignalDisplay::showZero(const QString &AGCZ, const QString &ACFE) const
{
    if (isOn(AGCZ)) {
        WidgetUpdate::range(ui.progBarSSLV, 0, 160);
        showReferenceText(u"(Relative)"_s, u"color:#28c125"_s);
    } else if (isOff(AGCZ) || !ValueText::isKnown(AGCZ)) {
        WidgetUpdate::range(ui.progBarSSLV, -140, 20);
        showAbsolute(ACFE);
    } else {
        return;
    }
    ui.lblCARR->setVisible(isOn(AGCZ));
    ui.lblCARRmark->setVisible(isOn(AGCZ));
}

void SignalDisplay::showReference(const QString &AGCZ, const QString &ACFE) const
{
    if (isOff(AGCZ))
        showAbsolute(ACFE);
}

void SignalDisplay::showAbsolute(const QString &ACFE) const
{
    if (isOn(ACFE))
        showReferenceText(u"(Antenna)"_s, u"color:#fcfd0f"_s);
    else
        showReferenceText(u"(Absolute)"_s, kPlainReference);
}

void SignalDisplay::showReferenceText(const QString &text, const QString &style) const
{
    WidgetUpdate::text(ui.lblRelAbs, text);
    ui.lblRelAbs->setProperty("bright", style != kPlainReference); // bright text stands on a dark ground
    WidgetUpdate::style(ui.lblRelAbs, style);
}

void SignalDisplay::showLevel(const QString &AGCZ, const QString &SSLV) const
{
    const auto level = NumberText::parse(SSLV);
    if (!level)
        return;
    const int decibels = NumberText::rounded(*level);
    const QString unit = isOff(AGCZ) ? u" dBm"_s : isOn(AGCZ) ? u" dB"_s : QString();
    WidgetUpdate::format(ui.progBarSSLV, NumberText::fixed(std::round(*level) + 0.0, 0) + unit);
    if (isOn(AGCZ)) {
        const bool present = decibels >= kCarrierThreshold;
        WidgetUpdate::lamp(ui.lblCARR, ui.lblCARRmark, present, present ? u"Yes"_s : u"No"_s);
    }
    WidgetUpdate::clampedValue(ui.progBarSSLV, decibels);
}
