#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

/// JSON text whose members keep the order in which they are given.
namespace remote::Json {

/// A name and its value, which is JSON already.
using Member = std::pair<QByteArray, QByteArray>;

[[nodiscard]] QByteArray quoted(const QString &text);
[[nodiscard]] QByteArray quoted(const QByteArray &text);
[[nodiscard]] QByteArray number(qint64 value);
/// An object on one line.
[[nodiscard]] QByteArray line(const QList<Member> &members);
/// An object with a line for each member. @param depth how deep it stands in others
[[nodiscard]] QByteArray object(const QList<Member> &members, int depth = 0);
/// A list of texts on one line.
[[nodiscard]] QByteArray list(const QByteArrayList &texts);

} // namespace remote::Json
