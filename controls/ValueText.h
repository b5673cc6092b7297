#pragma once

#include <QString>

/// How a value of the card reads where it stands as it is: one that was never read as "--", one of absurd length short.
namespace ValueText {

inline constexpr QLatin1StringView kUnknown{ "--" };
inline constexpr qsizetype kLongest = 20; ///< characters, so that the largest counters stand in full

/// Whether the card has told the value.
[[nodiscard]] bool isKnown(const QString &value);

/// The value itself, at most @p longest characters of it.
[[nodiscard]] QString shown(const QString &value, qsizetype longest = kLongest);

/// A number with its unit; an unknown value has none.
[[nodiscard]] QString withUnit(const QString &value, QLatin1StringView unit);

} // namespace ValueText
