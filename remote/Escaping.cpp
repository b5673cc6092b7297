#include "Escaping.h"

namespace {

QByteArray hexEscape(char c) { return "\\x" + QByteArray(1, c).toHex(); }

bool isControl(char c) { return uchar(c) < 0x20 || c == 0x7f; }

} // namespace

QByteArray Escaping::escaped(const QByteArray &bytes)
{
    QByteArray text;
    for (const char c : bytes) {
        if (c == '\\')
            text += "\\\\";
        else if (isControl(c) || uchar(c) > 0x7f)
            text += hexEscape(c);
        else
            text += c;
    }
    return text;
}

std::optional<QByteArray> Escaping::unescaped(const QByteArray &text)
{
    QByteArray bytes;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            bytes += text[i];
        } else if (text.sliced(i).startsWith("\\\\")) {
            bytes += text[i++];
        } else {
            const QByteArray digits = text.mid(i + 2, 2);
            bool read = false;
            const int value = digits.toInt(&read, 16);
            if (!read || digits.size() != 2 || text[i + 1] != 'x')
                return {};
            bytes += char(value);
            i += 3;
        }
    }
    return bytes;
}

QByteArray Escaping::printable(const QByteArray &text)
{
    QByteArray shown;
    for (const char c : text)
        shown += isControl(c) ? hexEscape(c) : QByteArray(1, c);
    return shown;
}
