#include "controls/ValueText.h"

#include "controls/NumberText.h"

bool ValueText::isKnown(const QString &value) { return !value.isEmpty() && value != QLatin1StringView("Unknown"); }

QString ValueText::shown(const QString &value, qsizetype longest)
{
    if (!isKnown(value))
        return kUnknown;
    if (value.size() <= longest)
        return value;
    if (const auto number = NumberText::parse(value))
        return NumberText::significant(*number);
    return value.first(longest - 1) + QChar(0x2026);
}

QString ValueText::withUnit(const QString &value, QLatin1StringView unit)
{
    const QString text = shown(value);
    return text == kUnknown ? text : text + unit;
}

QString ValueText::percentage(const QString &value, int fullScale)
{
    const auto number = NumberText::parseWhole(value);
    return number ? QString::number(qint64(*number) * 100 / fullScale) + QLatin1StringView(" %") : shown(value);
}
