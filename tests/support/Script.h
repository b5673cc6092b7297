#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>

/// The language of the tests' scripts: lines with "; " between them, each a verb and, behind a blank, its text. A test
/// or a bench says what its verbs do; a verb without handler ends the test program.
class Script
{
public:
    using Handler = std::function<void(const QString &text)>;

    struct Line
    {
        QString verb;
        QString text;
    };

    /// From now on @p verb does this.
    void on(const QString &verb, Handler handler);
    /// Carries out one line after the other, and @p afterLine behind each.
    void play(const QString &lines, const std::function<void()> &afterLine = {}) const;

    [[nodiscard]] static QList<Line> split(const QString &lines);

private:
    QMap<QString, Handler> m_handlers;
};
