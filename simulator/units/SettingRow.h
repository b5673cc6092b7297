#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <string_view>

namespace sim {

/// What a set must look like before a card takes it.
enum class Check {
    ReadOnly, ///< never settable
    OnOff,    ///< "0" or "1"
    Index,    ///< whole number from `low` to `high`
    Range,    ///< decimal number from `low` to `high`
    Ipv4,     ///< four numbers up to 255 with points between them
    HexWord,  ///< four hexadecimal digits, a number from `low` to `high`
    Text,     ///< printable text of bounded length
    Own,      ///< the unit itself decides
    Action,   ///< the unit does something with the value and keeps nothing; cannot be queried
};

/// Properties of a setting, to be combined with "|".
enum SettingFlag : unsigned {
    Plain = 0,
    Stored = 1,   ///< part of a preset
    Volatile = 2, ///< back to its start value after a power cycle
    Measured = 4, ///< worked out anew before every answer and report
    Inner = 8,    ///< kept under this name, which is no mnemonic on the link
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

/// Whether the card takes `value` by the row alone. Rows the unit decides (`Own`, `Action`) are never taken here.
[[nodiscard]] bool acceptedByRow(const SettingRow &row, QByteArrayView value);

/// Reads a plain decimal number ("-12.5"); no exponent, no blanks, no words. False leaves `number` alone.
[[nodiscard]] bool readDecimal(QByteArrayView text, double &number);

/// Reads up to four hexadecimal digits of either case. -1 if they are none.
[[nodiscard]] int readHex(QByteArrayView text);

/// Reads a whole number written in digits only, as positions in lists are. -1 if it is none.
[[nodiscard]] int readIndex(QByteArrayView text);

} // namespace sim
