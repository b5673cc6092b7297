#include "support/Script.h"

#include <utility>

void Script::on(const QString &verb, Handler handler) { m_handlers[verb] = std::move(handler); }

void Script::play(const QString &lines, const std::function<void()> &afterLine) const
{
    for (const Line &line : split(lines)) {
        const Handler handler = m_handlers.value(line.verb);
        if (!handler)
            qFatal("no such verb: %s", qPrintable(line.verb));
        handler(line.text);
        if (afterLine)
            afterLine();
    }
}

QList<Script::Line> Script::split(const QString &lines)
{
    QList<Line> split;
    for (const QString &line : lines.split(QStringLiteral("; ")))
        split.append({ line.section(u' ', 0, 0), line.section(u' ', 1) });
    return split;
}
