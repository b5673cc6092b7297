#include "controls/NumberText.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr int kThousand = 1000;
constexpr int kMillion = 1000 * 1000;

} // namespace

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

QString NumberText::fixed(double value, int decimals)
{
    constexpr double kAbsurd = 1e12;
    return std::abs(value) < kAbsurd ? QString::number(value, 'f', decimals) : significant(value);
}

QString NumberText::trimmed(double value, int decimals)
{
    QString text = fixed(value, decimals);
    while (text.contains(u'.') && !text.contains(u'e') && (text.endsWith(u'0') || text.endsWith(u'.')))
        text.chop(1);
    return text;
}

QString NumberText::scaled(const QString &wholeNumber)
{
    const qint64 number = wholeNumber.toLongLong(); // 0, and so the text itself, for anything else
    if (number >= kMillion)
        return trimmed(double(number) / kMillion, 6) + u'M';
    if (number >= kThousand)
        return trimmed(double(number) / kThousand, 3) + u'K';
    return wholeNumber;
}

QString NumberText::bandwidth(const QString &hertz)
{
    const double value = hertz.toDouble();
    if (value >= kMillion)
        return trimmed(value / kMillion, 2) + QLatin1StringView(" MHz");
    if (value >= kThousand)
        return trimmed(value / kThousand, 2) + QLatin1StringView(" KHz");
    return hertz;
}

double NumberText::parseScaled(const QString &typed)
{
    const QString text = QString(typed).replace(u',', u'.');
    for (const auto &[unit, factor] : { std::pair(u'M', kMillion), std::pair(u'm', kMillion),
                                        std::pair(u'K', kThousand), std::pair(u'k', kThousand) }) {
        if (const auto end = text.indexOf(unit); end >= 0)
            return text.first(end).toDouble() * factor;
    }
    return text.toDouble();
}

int NumberText::rounded(double value)
{
    constexpr double kLowest = std::numeric_limits<int>::min();
    constexpr double kHighest = std::numeric_limits<int>::max();
    return static_cast<int>(std::round(std::clamp(value, kLowest, kHighest)));
}
