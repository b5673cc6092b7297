#pragma once

#include <QString>

#include <optional>

/// Numbers as the wire and the panels write them: decimal point, no grouping, whatever the locale.
namespace NumberText {

/// The number a text holds; nothing for any other text, and for "inf" and "nan".
[[nodiscard]] std::optional<double> parse(const QString &text);

/// The whole number a text holds; nothing for any other text.
[[nodiscard]] std::optional<int> parseWhole(const QString &text);

/// Up to six significant digits, without trailing zeros.
[[nodiscard]] QString significant(double value);

/// The nearest whole number, bounded to what an int holds.
[[nodiscard]] int rounded(double value);

} // namespace NumberText
