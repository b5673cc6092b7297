#pragma once

#include <QString>

#include <optional>

/// Numbers as the wire and the panels write them: decimal point, no grouping, whatever the locale.
namespace NumberText {

/// The number in a text; nothing for any other text, "inf" and "nan" included.
[[nodiscard]] std::optional<double> parse(const QString &text);

/// The whole number in a text; nothing for any other text.
[[nodiscard]] std::optional<int> parseWhole(const QString &text);

/// Up to six significant digits, without trailing zeros.
[[nodiscard]] QString significant(double value);

/// Fixed decimals; from 1e12 on six significant digits instead.
[[nodiscard]] QString fixed(double value, int decimals);

/// Fixed decimals without trailing zeros: "10.5", "3".
[[nodiscard]] QString trimmed(double value, int decimals);

/// A rate as the operator reads it: 10500000 is "10.5M", 1234 is "1.234K". A number below 1000, or any other text, is
/// unchanged.
[[nodiscard]] QString scaled(const QString &wholeNumber);

/// A bandwidth as the operator reads it: 3500000 is "3.5 MHz", 900000 "900 KHz"; below 1000 the text is unchanged.
[[nodiscard]] QString bandwidth(const QString &hertz);

/// A typed rate: "M" or "m" after the number multiplies it by a million, "K" or "k" by a thousand. A comma is a decimal
/// point. A text without a number is 0.
[[nodiscard]] double parseScaled(const QString &typed);

/// The nearest whole number within the range of int.
[[nodiscard]] int rounded(double value);

} // namespace NumberText
