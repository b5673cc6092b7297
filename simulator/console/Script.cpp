#include "simulator/console/Script.h"

#include "simulator/units/SettingRow.h"

#include <QFile>

#include <algorithm>

namespace sim {

bool Script::load(const QString &path, QString &error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
        return false;
    }
    double now = 0;
    int number = 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        ++number;
        if (!addLine(line.trimmed(), now)) {
            error = QStringLiteral("%1:%2: wrong time").arg(path).arg(number);
            return false;
        }
    }
    std::stable_sort(m_entries.begin(), m_entries.end(), [](const Entry &a, const Entry &b) { return a.due < b.due; });
    return true;
}

bool Script::addLine(const QByteArray &line, double &now)
{
    const qsizetype blank = line.indexOf(' ');
    double seconds = 0;
    if (line.startsWith("wait ")) {
        const bool valid = readDecimal(QByteArrayView(line).sliced(blank + 1).trimmed(), seconds) && seconds >= 0;
        now += valid ? seconds : 0;
        return valid;
    }
    if (line.startsWith('@')) {
        if (blank < 0 || !readDecimal(QByteArrayView(line).sliced(1, blank - 1), seconds) || seconds < 0)
            return false;
        now = seconds;
        m_entries.append({ now, line.mid(blank + 1) });
    } else if (!line.isEmpty() && !line.startsWith('#')) {
        m_entries.append({ now, line });
    }
    return true;
}

QList<QByteArray> Script::takeDue(double seconds)
{
    constexpr double kRounding = 1e-9;
    QList<QByteArray> orders;
    while (!m_entries.isEmpty() && m_entries.first().due <= seconds + kRounding)
        orders.append(m_entries.takeFirst().order);
    return orders;
}

} // namespace sim
