#pragma once

#include <QString>

/// How a value of the card is shown unchanged: "--" if it was never read, shortened if it is very long.
namespace ValueText {

inline constexpr QLatin1StringView kUnknown{ "--" };
inline constexpr qsizetype kLongest = 20; ///< characters; enough for the largest counters

/// Whether the card has reported the value.
[[nodiscard]] bool isKnown(const QString &value);

/// The value itself, at most @p longest characters of it.
[[nodiscard]] QString shown(const QString &value, qsizetype longest = kLongest);

/// A whole number as a percentage of @p fullScale; any other value as shown().
[[nodiscard]] QString percentage(const QString &value, int fullScale);
/// A number with its unit; an unknown value has none.
[[nodiscard]] QString withUnit(const QString &value, QLatin1StringView unit);

} // namespace ValueText
