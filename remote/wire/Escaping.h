#pragma once

#include <QByteArray>

#include <optional>

/// Bytes as printable text and back.
namespace remote::Escaping {

/// Control characters as "\x06", a backslash as "\\"; everything beyond ASCII too, so that any bytes survive.
[[nodiscard]] QByteArray escaped(const QByteArray &bytes);
/// The bytes that escaped() made @p text of; nothing if it did not.
[[nodiscard]] std::optional<QByteArray> unescaped(const QByteArray &text);
/// @p text with its control characters escaped, for a terminal.
[[nodiscard]] QByteArray printable(const QByteArray &text);
/// The same for a message: of a long text only the beginning.
[[nodiscard]] QByteArray brief(const QByteArray &text);

} // namespace remote::Escaping
