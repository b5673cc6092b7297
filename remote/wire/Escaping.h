#pragma once

#include <QByteArray>

#include <optional>

/// Bytes as printable text and back.
namespace remote::Escaping {

/// Escapes control characters and bytes beyond ASCII as "\x06", a backslash as "\\", so that any bytes survive.
[[nodiscard]] QByteArray escaped(const QByteArray &bytes);
/// Reverses escaped(); nothing if @p text holds a malformed escape.
[[nodiscard]] std::optional<QByteArray> unescaped(const QByteArray &text);
/// @p text with its control characters escaped, for a terminal.
[[nodiscard]] QByteArray printable(const QByteArray &text);
/// As printable(), for a message: only the beginning of a long text.
[[nodiscard]] QByteArray brief(const QByteArray &text);

} // namespace remote::Escaping
