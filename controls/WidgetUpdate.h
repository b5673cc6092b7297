#pragma once

#include <QString>

class ChoiceBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QWidget;

/// Writes to a widget only what differs, so that an unchanged status causes no repaint.
namespace WidgetUpdate {

void text(QLabel *label, const QString &text);
void style(QWidget *widget, const QString &styleSheet);
/// Sets what a screen reader says besides the accessible name; for states that are otherwise shown by colour alone.
void description(QWidget *widget, const QString &text);
void format(QProgressBar *bar, const QString &format);
/// Sets the nearest value within the bar's range.
void clampedValue(QProgressBar *bar, int value);
/// Changes the range and keeps the value as near as the new range allows.
void range(QProgressBar *bar, int minimum, int maximum);
/// Shows an on/off setting: "1" on, "0" off. Any other value is shown on the button, "--" for an unknown one; the
/// style of a known one is unchanged.
void onOff(QPushButton *button, const QString &data);
/// Shows a reading with its unit, "--" for one that was never reported; any other text leaves the label unchanged.
void reading(QLabel *label, const QString &data, QLatin1StringView unit);
/// Shows a state on a lamp, three ways: by colour, by the word in the mark beside it, and to a screen reader.
void lamp(QLabel *lamp, QLabel *mark, bool good, const QString &word);
/// Sets the title literally; Qt gives "[*]" a meaning of its own.
void windowTitle(QWidget *window, const QString &title);
/// The title that windowTitle() was given.
[[nodiscard]] QString plainTitle(const QWidget *window);
/// Shows a lock on a lamp: "1" locked, "0" lost; any other text leaves the lamp unchanged.
void lockLamp(QLabel *lamp, QLabel *mark, const QString &data);
/// Scales an AGC bar to the slope of its output: "0" 50 dB/V, "1" 20 dB/V, "2" and an unknown one 10 dB/V. Any other
/// text leaves the bar unchanged.
void agcSlope(QProgressBar *bar, const QString &slope);
/// Shows the slope of an AGC output and scales its bar.
void agcSlope(ChoiceBox *box, QProgressBar *bar, const QString &slope);
/// Shows an AGC level.
/// @param level    millivolts as wire text; any other text leaves the bar unchanged
/// @param polarity "1" for an output that falls with the signal
void agcLevel(QProgressBar *bar, const QString &level, const QString &polarity);

} // namespace WidgetUpdate
