#include "remote/wire/Message.h"

#include <algorithm>
#include <cmath>
#include <cstring>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

constexpr char kAck = '\x06';
constexpr char kNak = '\x15';
constexpr qsizetype kLongestFrame = 4096;

/// A plain decimal number; "nan", "inf" and hexadecimal texts are not.
std::optional<double> number(const QByteArray &text)
{
    const bool plain = std::ranges::all_of(text, [](char c) { return std::strchr("0123456789+-.eE", c) && c != 0; });
    bool read = false;
    const double value = text.toDouble(&read);
    return plain && read ? std::optional(value) : std::nullopt;
}

/// A longer frame is dropped by the head.
QString lengthProblem(const QByteArray &frame)
{
    return frame.size() > kLongestFrame ? u"with %1 bytes it is longer than a message may be"_s.arg(frame.size())
                                        : QString();
}

} // namespace

std::optional<Message> Message::parse(const QByteArray &frame)
{
    Message message;
    const qsizetype colon = frame.indexOf(':');
    const qsizetype secondColon = frame.indexOf(':', colon + 1);
    message.address = frame.left(colon);
    if (colon < 1)
        return {};
    if (secondColon < 0) {
        if (!frame.endsWith('?'))
            return {};
        message.kind = Kind::Query;
        message.mnemonic = frame.sliced(colon + 1).chopped(1);
        return message;
    }
    message.mnemonic = frame.sliced(colon + 1, secondColon - colon - 1);
    message.data = frame.sliced(secondColon + 1);
    if (message.data.endsWith(kAck))
        message.kind = Kind::Acknowledged;
    else if (message.data.endsWith(kNak))
        message.kind = Kind::Refused;
    if (message.isAnswer())
        message.data.chop(1);
    return message;
}

QByteArray Message::acknowledged(const QByteArray &key, const QByteArray &value) { return set(key, value) + kAck; }

QString Message::keyProblem(const QByteArray &key)
{
    if (hasControlCharacter(key) || key.contains(' ') || key.contains('?'))
        return u"an address or mnemonic holds no blanks, question marks or control characters"_s;
    if (key.count(':') != 1 || key.startsWith(':') || key.endsWith(':'))
        return u"a setting is written ADDRESS:MNEMONIC, for example R1:FREQ"_s;
    return {};
}

QString Message::queryProblem(const QByteArray &key)
{
    const QString wrong = keyProblem(key);
    return wrong.isEmpty() ? lengthProblem(query(key)) : wrong;
}

QString Message::setProblem(const QByteArray &key, const QByteArray &value)
{
    if (value.isEmpty())
        return u"an empty value cannot be set"_s;
    if (hasControlCharacter(value))
        return u"a value holds no control characters"_s;
    // The head takes such a frame for a garbled query and never answers it.
    if (value.contains('?'))
        return u"a value with a question mark cannot be set from here"_s;
    return lengthProblem(set(key, value));
}

bool Message::hasControlCharacter(QByteArrayView text)
{
    return std::ranges::any_of(text, [](char c) { return uchar(c) < 0x20 || c == 0x7f; });
}

bool Message::sameValue(const QByteArray &one, const QByteArray &other)
{
    if (one == other)
        return true;
    const auto first = number(one);
    const auto second = number(other);
    // Both are decimals of at most a dozen digits.
    return first && second && std::abs(*first - *second) <= 1e-12 * std::max(std::abs(*first), std::abs(*second));
}

bool Message::isKnown(const QByteArray &value) { return !value.isEmpty() && value != "Unknown" && value != "Uknown"; }

} // namespace remote
