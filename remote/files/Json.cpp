#include "remote/files/Json.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace remote {

QByteArray Json::quoted(const QString &text)
{
    return QJsonDocument(QJsonArray{ text }).toJson(QJsonDocument::Compact).sliced(1).chopped(1);
}

QByteArray Json::quoted(const QByteArray &text) { return quoted(QString::fromLocal8Bit(text)); }

QByteArray Json::number(qint64 value) { return QByteArray::number(value); }

QByteArray Json::line(const QList<Member> &members)
{
    QByteArrayList parts;
    for (const auto &[name, value] : members)
        parts.append(quoted(name) + ": " + value);
    return '{' + parts.join(", ") + '}';
}

QByteArray Json::object(const QList<Member> &members, int depth)
{
    if (members.isEmpty())
        return "{}";
    const QByteArray indent = '\n' + QByteArray(qsizetype(4) * depth, ' ');
    QByteArrayList parts;
    for (const auto &[name, value] : members)
        parts.append(indent + "    " + quoted(name) + ": " + value);
    return '{' + parts.join(',') + indent + '}';
}

QByteArray Json::list(const QByteArrayList &texts)
{
    QByteArrayList parts;
    for (const QByteArray &text : texts)
        parts.append(quoted(text));
    return '[' + parts.join(", ") + ']';
}

} // namespace remote
