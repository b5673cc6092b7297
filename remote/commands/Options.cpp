#include "remote/commands/Options.h"

#include "remote/commands/ValuePrinter.h"
#include "remote/wire/Escaping.h"
#include "remote/wire/Message.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

QString keyProblem(const QString &argument)
{
    const QByteArray key = argument.toLocal8Bit();
    const QString wrong = Message::queryProblem(key);
    return wrong.isEmpty() ? wrong : u"\"%1\": %2"_s.arg(QString::fromLocal8Bit(Escaping::brief(key)), wrong);
}

QString firstOf(const QStringList &texts)
{
    for (const QString &text : texts) {
        if (!text.isEmpty())
            return text;
    }
    return {};
}

} // namespace

void Options::chooseLinks(const QString &folder)
{
    const auto choose = [&folder](const QString &named, const char *variable, const QString &file) {
        const auto inside = [&file](const QString &f) { return f.isEmpty() ? QString() : QDir(f).filePath(file); };
        return firstOf({ named, inside(folder), qEnvironmentVariable(variable),
                         inside(qEnvironmentVariable("ZIRVO_DEVICE_DIR")) });
    };
    // It may be missing in a folder, but a named device must open.
    const bool isNamed = !statusLink.isEmpty() || !qEnvironmentVariableIsEmpty("ZIRVO_REMOTE_STATUS_LINK");
    link = choose(link, "ZIRVO_REMOTE_LINK", u"client-remote"_s);
    statusLink = choose(statusLink, "ZIRVO_REMOTE_STATUS_LINK", u"client-status"_s);
    if (!isNamed && !QFileInfo::exists(statusLink))
        statusLink.clear();
}

QStringList Options::patterns() const
{
    if (command == u"watch")
        return arguments;
    return command == u"replay" ? arguments.mid(1) : QStringList();
}

bool Options::usesLink() const { return command != u"replay" || send; }

QString Options::problem() const
{
    const bool namesSettings = command == u"get" || command == u"set";
    if (!namesSettings && command != u"watch" && !arguments.isEmpty() && arguments[0].isEmpty())
        return u"the name of a file is empty"_s;
    if (usesLink() && link.isEmpty())
        return u"no link: give --link or --device-dir"_s;
    if (!usesLink() && !recordFile.isEmpty())
        return u"replay takes --record only with --send"_s;
    QStringList problems;
    if (command == u"set")
        problems = { keyProblem(arguments[0]),
                     Message::setProblem(arguments[0].toLocal8Bit(), arguments[1].toLocal8Bit()) };
    for (const QString &argument : command == u"get" ? arguments : QStringList())
        problems.append(keyProblem(argument));
    for (const QString &pattern : patterns())
        problems.append(ValuePrinter::patternProblem(pattern));
    return firstOf(problems);
}

} // namespace remote
