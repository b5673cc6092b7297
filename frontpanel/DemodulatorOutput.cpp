#include "frontpanel/DemodulatorOutput.h"

#include "controls/NumberText.h"
#include "controls/ValueSlider.h"
#include "controls/ValueText.h"
#include "controls/WidgetUpdate.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kFullGain = 255;

} // namespace

DemodulatorOutput::DemodulatorOutput(const Parts &parts, DmdChan *channel, bool isGainInDecibels)
    : m_parts(parts)
    , m_channel(channel)
    , m_isGainInDecibels(isGainInDecibels)
    , m_rate(EntryField::of(parts.rate, channel, parts.rateMnemonic, parts.getRate,
                            [](const QString &rate) { return ValueText::shown(NumberText::scaled(rate)); }))
{
}

void DemodulatorOutput::DisplayVideoGain(const QString &value) const
{
    WidgetUpdate::text(m_parts.gainValue, gainText(value));
    m_parts.gain->showValue(value);
}

void DemodulatorOutput::chooseGain(int value) const
{
    const QString gain = QString::number(value);
    WidgetUpdate::text(m_parts.gainValue, gainText(gain));
    (m_channel->*m_parts.setGain)(gain);
}

QString DemodulatorOutput::gainText(const QString &value) const
{
    if (m_isGainInDecibels)
        return ValueText::withUnit(value, "dB"_L1);
    return ValueText::percentage(value, kFullGain);
}

std::optional<double> DemodulatorOutput::enteredRate() const
{
    if (!m_rate.hasValue())
        return std::nullopt;
    return NumberText::parseScaled(m_rate.text());
}

void DemodulatorOutput::takeRate(double rate) const
{
    (m_channel->*m_parts.setRate)(QString::number(rate, 'f', 0));
    m_rate.end();
}
