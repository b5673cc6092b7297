#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

namespace remote {

/// One frame of the remote protocol, taken apart. Settings are named by their key, "ADDRESS:MNEMONIC".
struct Message
{
    enum class Kind { Query, Value, Acknowledged, Refused };

    Kind kind = Kind::Value;
    QByteArray address;
    QByteArray mnemonic;
    QByteArray data; ///< without the ACK or NAK; may hold colons

    [[nodiscard]] QByteArray key() const { return address + ':' + mnemonic; }
    [[nodiscard]] bool isAnswer() const { return kind == Kind::Acknowledged || kind == Kind::Refused; }

    /// The message in @p frame; nothing if it is neither a query nor a value.
    [[nodiscard]] static std::optional<Message> parse(const QByteArray &frame);
    [[nodiscard]] static QByteArray query(const QByteArray &key) { return key + '?'; }
    [[nodiscard]] static QByteArray set(const QByteArray &key, const QByteArray &value) { return key + ':' + value; }
    [[nodiscard]] static QByteArray acknowledged(const QByteArray &key, const QByteArray &value);

    /// Why @p key cannot be the key of a setting; empty if it can.
    [[nodiscard]] static QString keyProblem(const QByteArray &key);
    /// Why @p key cannot be queried; empty if it can.
    [[nodiscard]] static QString queryProblem(const QByteArray &key);
    /// Why @p key cannot be set to @p value; empty if it can.
    [[nodiscard]] static QString setProblem(const QByteArray &key, const QByteArray &value);
    [[nodiscard]] static bool hasControlCharacter(QByteArrayView text);

    /// Whether two values mean the same: numbers are compared as numbers, everything else as text.
    [[nodiscard]] static bool sameValue(const QByteArray &one, const QByteArray &other);
    /// Whether @p value is one: neither empty nor a word for a value that no card has reported yet.
    [[nodiscard]] static bool isKnown(const QByteArray &value);
};

} // namespace remote
