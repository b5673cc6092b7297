#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace sim {

/// Console commands with the time at which each is due. Lines are "@SECONDS command" (since the start), "wait SECONDS"
/// (delays the commands that follow), a bare command (due at the time reached so far), or a "#" comment.
class Script
{
public:
    /// False with `error` set if the file cannot be read or a time is wrong.
    [[nodiscard]] bool load(const QString &path, QString &error);
    /// Removes and returns the commands due by `seconds` since the start, earliest first.
    [[nodiscard]] QList<QByteArray> takeDue(double seconds);

private:
    struct Entry
    {
        double due;
        QByteArray order;
    };
    [[nodiscard]] bool addLine(const QByteArray &line, double &now);

    QList<Entry> m_entries;
};

} // namespace sim
