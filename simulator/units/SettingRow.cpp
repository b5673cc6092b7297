#include "simulator/units/SettingRow.h"

#include <QByteArrayList>

#include <algorithm>
#include <cctype>

namespace sim {

namespace {

constexpr qsizetype kLongestText = 128;
constexpr qsizetype kLongestNumber = 12;
constexpr qsizetype kLongestHex = 4;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isDigits(QByteArrayView text) { return !text.isEmpty() && std::all_of(text.begin(), text.end(), isDigit); }

bool isPrintable(QByteArrayView text)
{
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; };
    return !text.isEmpty() && text.size() <= kLongestText && std::none_of(text.begin(), text.end(), isControl);
}

bool isIpv4(QByteArrayView text)
{
    const QByteArrayList parts = text.toByteArray().split('.');
    return parts.size() == 4 && std::all_of(parts.begin(), parts.end(), [](const QByteArray &part) {
               return part.size() <= 3 && readIndex(part) >= 0 && readIndex(part) <= 255;
           });
}

} // namespace

bool readDecimal(QByteArrayView text, double &number)
{
    QByteArrayView digits = text;
    if (!digits.isEmpty() && (digits.front() == '-' || digits.front() == '+'))
        digits = digits.sliced(1);
    const qsizetype point = digits.indexOf('.');
    const bool wellFormed =
        point < 0 ? isDigits(digits) : isDigits(digits.first(point)) && isDigits(digits.sliced(point + 1));
    if (!wellFormed || digits.size() > kLongestNumber)
        return false;
    number = text.toByteArray().toDouble();
    return true;
}

int readIndex(QByteArrayView text)
{
    constexpr qsizetype kLongestIndex = 9;
    return isDigits(text) && text.size() <= kLongestIndex ? text.toByteArray().toInt() : -1;
}

int readHex(QByteArrayView text)
{
    bool valid = !text.isEmpty() && text.size() <= kLongestHex && std::all_of(text.begin(), text.end(), [](char c) {
        return std::isxdigit(static_cast<unsigned char>(c));
    });
    return valid ? text.toByteArray().toInt(&valid, 16) : -1;
}

bool acceptedByRow(const SettingRow &row, QByteArrayView value)
{
    double number = 0;
    switch (row.check) {
    case Check::OnOff:
        return value == "0" || value == "1";
    case Check::Index:
        return readIndex(value) >= row.low && readIndex(value) <= row.high;
    case Check::Range:
        return readDecimal(value, number) && number >= row.low && number <= row.high;
    case Check::Ipv4:
        return isIpv4(value);
    case Check::HexWord:
        return value.size() == kLongestHex && readHex(value) >= row.low && readHex(value) <= row.high;
    case Check::Text:
        return isPrintable(value);
    case Check::ReadOnly:
    case Check::Own:
    case Check::Action:
        break;
    }
    return false;
}

} // namespace sim
