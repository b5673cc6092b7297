#pragma once

#include <QString>

/// On/off settings as the wire writes them; any other text is neither.
[[nodiscard]] inline bool isOn(const QString &value) { return value == QLatin1StringView("1"); }
[[nodiscard]] inline bool isOff(const QString &value) { return value == QLatin1StringView("0"); }
