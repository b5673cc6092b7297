#pragma once

#include "channels/DmdChan.h"

#include <span>

/// One number that the operator types for a demodulator: how it is parsed, checked, written to the card and shown.
///
/// The decimal point may be typed as a comma; a text that is no number is refused.
struct DmdNumber
{
    QLatin1StringView mnemonic;
    QString (DmdChan::*get)() const;
    void (DmdChan::*set)(const QString &);

    QLatin1StringView name; ///< title of the box that refuses a value
    double lowest;          ///< in the unit of the checked value, like the other bound; both are accepted
    double highest;
    QLatin1StringView message; ///< names the valid range

    /// The value of a text: a fraction for the loop bandwidths, else in the unit that is typed.
    double (*parse)(const QString &text);
    /// The value as it is sent.
    QString (*toWire)(double value);
    /// The card's value as the operator reads it; empty if it is no number.
    QString (*toText)(const QString &wire);

    /// The text that a field shows for a value: itself if it is no such number, "--" for an unknown one.
    [[nodiscard]] QString shown(const QString &wire) const;
    [[nodiscard]] bool accepts(double value) const { return value >= lowest && value <= highest; }

    /// Every such number.
    [[nodiscard]] static std::span<const DmdNumber> all();
    /// The number with this mnemonic, which must exist.
    [[nodiscard]] static const DmdNumber &of(QLatin1StringView mnemonic);
};
