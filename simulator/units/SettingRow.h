#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <string_view>

namespace sim {

/// How the value of a set request is checked.
enum class Check {
    ReadOnly, ///< never settable
    OnOff,    ///< "0" or "1"
    Index,    ///< whole number from `low` to `high`
    Range,    ///< decimal number from `low` to `high`
    Ipv4,     ///< four numbers up to 255 with points between them
    HexWord,  ///< four hexadecimal digits, a number from `low` to `high`
    Text,     ///< printable text of bounded length
    Own,      ///< the unit itself decides
    Action,   ///< the unit acts on the value and stores nothing; cannot be queried
};

/// Properties of a setting, to be combined with "|".
enum SettingFlag : unsigned {
    Plain = 0,
    Stored = 1,   ///< part of a preset
    Volatile = 2, ///< back to its start value after a power cycle
    Measured = 4, ///< computed again before every answer and report
    Inner = 8,    ///< stored under this name, but not a mnemonic on the link
};

/// One mnemonic of a unit.
struct SettingRow
{
    std::string_view mnemonic;
    Check check = Check::ReadOnly;
    std::string_view initial{};
    unsigned flags = Plain;
    double low = 0;
    double high = 0;

    [[nodiscard]] bool has(SettingFlag flag) const { return (flags & flag) != 0; }
    [[nodiscard]] QByteArrayView name() const { return { mnemonic.data(), qsizetype(mnemonic.size()) }; }
};

/// Whether the row alone accepts `value`. Always false for rows that the unit decides (`Own`, `Action`).
[[nodiscard]] bool acceptedByRow(const SettingRow &row, QByteArrayView value);

/// Reads a plain decimal number ("-12.5"); no exponent, blanks or words. If false, `number` is unchanged.
[[nodiscard]] bool readDecimal(QByteArrayView text, double &number);

/// Reads one to four hexadecimal digits of either case. -1 if the text is anything else.
[[nodiscard]] int readHex(QByteArrayView text);

/// Reads a whole number written in digits only, such as a list position. -1 if the text is anything else.
[[nodiscard]] int readIndex(QByteArrayView text);

} // namespace sim
