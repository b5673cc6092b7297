#pragma once

#include <QByteArrayList>
#include <QRegularExpression>

/// Goes through steps "request > answer" separated by ";" and returns the first that went otherwise. The answer is a
/// regular expression; one that begins with ":" repeats the request. Behind ">>" it may take up to 250 requests, with
/// @p pass called between them.
template <typename Ask, typename Pass>
QByteArray talk(const QByteArray &steps, Ask ask, Pass pass)
{
    for (const QByteArray &step : steps.split(';')) {
        const QByteArray said = step.left(step.indexOf('>')).trimmed();
        const QByteArray wanted = step.mid(step.lastIndexOf('>') + 1).trimmed();
        const QByteArray answer = (wanted.startsWith(':') ? said : QByteArray()) + wanted;
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(QString::fromLatin1(answer)));
        QByteArray heard = ask(said);
        for (int left = step.contains(">>") ? 250 : 0; !pattern.match(QString::fromLatin1(heard)).hasMatch(); --left) {
            if (left == 0)
                return step + " was " + heard;
            pass();
            heard = ask(said);
        }
    }
    return {};
}
