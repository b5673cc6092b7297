#include "controls/WidgetUpdate.h"

#include "controls/ChoiceBox.h"
#include "controls/NumberText.h"
#include "controls/OnOff.h"
#include "controls/ValueText.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

void WidgetUpdate::text(QLabel *label, const QString &text)
{
    if (label->text() != text)
        label->setText(text);
}

void WidgetUpdate::style(QWidget *widget, const QString &styleSheet)
{
    if (widget->styleSheet() != styleSheet)
        widget->setStyleSheet(styleSheet);
}

void WidgetUpdate::description(QWidget *widget, const QString &text)
{
    if (widget->accessibleDescription() != text)
        widget->setAccessibleDescription(text);
}

void WidgetUpdate::format(QProgressBar *bar, const QString &format)
{
    if (bar->format() != format)
        bar->setFormat(format);
}

void WidgetUpdate::clampedValue(QProgressBar *bar, int value)
{
    bar->setValue(std::clamp(value, bar->minimum(), bar->maximum()));
}

void WidgetUpdate::range(QProgressBar *bar, int minimum, int maximum)
{
    const int value = bar->value();
    bar->setRange(minimum, maximum); // empties a bar whose value the new range does not hold
    clampedValue(bar, value);
}

void WidgetUpdate::onOff(QPushButton *button, const QString &data)
{
    constexpr qsizetype kLongestWord = 6; // a longer one would push the other controls aside
    const bool isSwitched = isOn(data) || isOff(data);
    button->setText(isOn(data)    ? u"ON"_s
                    : isOff(data) ? u"OFF"_s
                                  : ValueText::shown(data, kLongestWord).replace(u'&', "&&"_L1));
    description(button, isSwitched ? button->text() : ValueText::shown(data));
    if (isSwitched)
        style(button, isOn(data) ? u"color:#28c125"_s : u"color:#000000"_s);
    else if (!ValueText::isKnown(data))
        style(button, {});
}

void WidgetUpdate::reading(QLabel *label, const QString &data, QLatin1StringView unit)
{
    if (!ValueText::isKnown(data) || NumberText::parse(data))
        text(label, ValueText::withUnit(data, unit));
}

void WidgetUpdate::lamp(QLabel *lampLabel, QLabel *mark, bool good, const QString &word)
{
    style(lampLabel, good ? u"background-color: #24d620;"_s : u"background-color: #f11029;"_s);
    text(mark, word);
    description(lampLabel, word);
}

void WidgetUpdate::windowTitle(QWidget *window, const QString &title)
{
    window->setWindowTitle(QString(title).replace("[*]"_L1, "[*][*]"_L1));
}

QString WidgetUpdate::plainTitle(const QWidget *window) { return window->windowTitle().replace("[*][*]"_L1, "[*]"_L1); }

void WidgetUpdate::lockLamp(QLabel *lampLabel, QLabel *mark, const QString &data)
{
    if (isOn(data))
        lamp(lampLabel, mark, true, u"Lock"_s);
    else if (isOff(data))
        lamp(lampLabel, mark, false, u"Lost"_s);
}

void WidgetUpdate::agcSlope(QProgressBar *bar, const QString &slope)
{
    static constexpr std::array kFullScaleMillivolts{ 2500, 6000, 12000 };
    const auto index = NumberText::parseWhole(slope);
    if (!ValueText::isKnown(slope))
        range(bar, bar->minimum(), kFullScaleMillivolts.back());
    else if (index && *index >= 0 && std::size_t(*index) < kFullScaleMillivolts.size())
        range(bar, bar->minimum(), kFullScaleMillivolts[std::size_t(*index)]);
}

void WidgetUpdate::agcSlope(ChoiceBox *box, QProgressBar *bar, const QString &slope)
{
    box->showPosition(slope);
    agcSlope(bar, slope);
}

void WidgetUpdate::agcLevel(QProgressBar *bar, const QString &level, const QString &polarity)
{
    const auto millivolts = NumberText::parse(level);
    if (!millivolts)
        return;
    format(bar, NumberText::significant(*millivolts / 1000) + u" V"_s);
    const double shown = isOn(polarity) ? -*millivolts : *millivolts;
    clampedValue(bar, NumberText::rounded(std::trunc(shown)));
}
