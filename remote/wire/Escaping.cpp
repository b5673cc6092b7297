#include "remote/wire/Escaping.h"

namespace remote {

namespace {

constexpr qsizetype kHexEscapeSize = 4;
constexpr qsizetype kBriefSize = 80;

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
    qsizetype plain = 0; // start of the text between two escapes
    for (qsizetype i = text.indexOf('\\'); i >= 0; i = text.indexOf('\\', plain)) {
        bytes += QByteArrayView(text).sliced(plain, i - plain);
        const QByteArray escape = text.mid(i, kHexEscapeSize);
        if (escape.startsWith("\\\\")) {
            bytes += '\\';
            plain = i + 2;
        } else {
            const QByteArray byte = QByteArray::fromHex(escape.sliced(1));
            if (byte.size() != 1 || escape.toLower() != hexEscape(byte[0]))
                return {};
            bytes += byte;
            plain = i + kHexEscapeSize;
        }
    }
    return bytes += QByteArrayView(text).sliced(plain);
}

QByteArray Escaping::printable(const QByteArray &text)
{
    QByteArray shown;
    for (const char c : text)
        shown += isControl(c) ? hexEscape(c) : QByteArray(1, c);
    return shown;
}

QByteArray Escaping::brief(const QByteArray &text)
{
    const QByteArray shown = printable(text.first(qMin(text.size(), kBriefSize)));
    return text.size() > kBriefSize ? shown + "..." : shown;
}

} // namespace remote
