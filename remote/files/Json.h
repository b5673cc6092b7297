#pragma once

#include <QByteArray>

#include <string>

#include <nlohmann/json_fwd.hpp>

/// JSON whose members keep the order in which they are given.
namespace remote::Json {

using Value = nlohmann::ordered_json;

/// @p bytes as a text; what is not UTF-8 becomes a replacement character.
[[nodiscard]] std::string text(const QByteArray &bytes);
/// @p value on one line.
[[nodiscard]] QByteArray line(const Value &value);
/// @p value with a line for each member; a list stays on one line.
[[nodiscard]] QByteArray lines(const Value &value);

} // namespace remote::Json
