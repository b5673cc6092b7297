#pragma once

#include "channels/DmdChan.h"

#include <span>

/// One number that the operator types for a demodulator: how it is read, checked, written to the card and shown.
///
/// In a text the decimal point may be a comma; a text that is no number is refused.
struct DmdNumber
{
    QLatin1StringView mnemonic;
    QString (DmdChan::*get)() const;
    void (DmdChan::*set)(const QString &);

    QLatin1StringView name; ///< says which number is refused
    double lowest;          ///< in the unit of the checked value, like the other bound; both are accepted
    double highest;
    QLatin1StringView message; ///< says what is accepted

    /// The value that a text stands for: a fraction for the loop bandwidths, else in the unit that is typed.
    double (*parse)(const QString &text);
    /// The value as the card takes it.
    QString (*toWire)(double value);
    /// The card's value as the operator reads it; empty if it is no number.
    QString (*toText)(const QString &wire);

    [[nodiscard]] bool accepts(double value) const { return value >= lowest && value <= highest; }

    /// Every such number.
    [[nodiscard]] static std::span<const DmdNumber> all();
    /// The number with this mnemonic, which must exist.
    [[nodiscard]] static const DmdNumber &of(QLatin1StringView mnemonic);
};
