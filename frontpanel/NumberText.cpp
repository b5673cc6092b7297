#include "frontpanel/NumberText.h"

#include <algorithm>
#include <cmath>
#include <limits>

std::optional<double> NumberText::parse(const QString &text)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<int> NumberText::parseWhole(const QString &text)
{
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    if (!isNumber)
        return std::nullopt;
    return value;
}

QString NumberText::significant(double value)
{
    return QString::number(value + 0.0, 'g', 6); // turns -0 into 0
}

int NumberText::rounded(double value)
{
    constexpr double kLowest = std::numeric_limits<int>::min();
    constexpr double kHighest = std::numeric_limits<int>::max();
    return static_cast<int>(std::round(std::clamp(value, kLowest, kHighest)));
}
