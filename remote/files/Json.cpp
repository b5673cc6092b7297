#include "remote/files/Json.h"

#include <QByteArrayList>
#include <QString>

#include <nlohmann/json.hpp>

namespace remote {

std::string Json::text(const QByteArray &bytes) { return QString::fromLocal8Bit(bytes).toStdString(); }

/// Line breaks stand between items only: inside a text they are escaped.
QByteArray Json::line(const Value &value)
{
    return QByteArray::fromStdString(value.dump(0)).replace(",\n", ", ").replace("\n", "");
}

QByteArray Json::lines(const Value &value)
{
    QByteArray text;
    bool inList = false;
    for (const QByteArray &line : QByteArray::fromStdString(value.dump(4)).split('\n')) {
        const bool endsList = inList && line.trimmed().startsWith(']');
        if (!inList)
            text += '\n' + line;
        else
            text += (endsList || text.endsWith('[') ? "" : " ") + line.trimmed();
        inList = line.endsWith('[') || (inList && !endsList);
    }
    return text.sliced(1);
}

} // namespace remote
