#include "remote/commands/Options.h"

#include "remote/commands/ExitCode.h"
#include "remote/commands/Usage.h"
#include "remote/commands/ValuePrinter.h"
#include "remote/wire/Escaping.h"
#include "remote/wire/Message.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

constexpr int kGoOn = -1;

int print(const QByteArray &text)
{
    if (std::fputs(text.constData(), stdout) >= 0 && std::fflush(stdout) == 0)
        return ExitCode::Fine;
    std::fprintf(stderr, "zirvo-remote: standard output: %s\n", std::strerror(errno));
    return ExitCode::NoAnswer;
}

/// What follows "--name" may also stand behind "=".
QString valueOf(const QStringList &words, qsizetype &position, qsizetype equals)
{
    return equals < 0 ? words.value(++position) : words[position].sliced(equals + 1);
}

/// Something like "-x" is an option misspelt, "-5" and "-" are values.
bool looksLikeOption(const QString &word) { return word.size() > 1 && word[0] == u'-' && word[1].isLetter(); }

QString readNumber(const QHash<QString, QString> &given, const QString &name, double least, double most, double &number)
{
    if (!given.contains(name))
        return {};
    bool read = false;
    const double value = given[name].toDouble(&read);
    if (!read || !(value >= least && value <= most))
        return u"--%1 takes a number from %2 to %3"_s.arg(name).arg(least, 0, 'g', 10).arg(most, 0, 'g', 10);
    number = value;
    return {};
}

QString readWhole(const QHash<QString, QString> &given, const QString &name, int least, int &number)
{
    double value = number;
    QString wrong = readNumber(given, name, least, 1e9, value);
    if (wrong.isEmpty() && value != std::floor(value))
        return u"--%1 takes a whole number"_s.arg(name);
    number = int(value);
    return wrong;
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

int Options::read(const QStringList &words)
{
    Given given;
    QString wrong = sort(words.sliced(1), given);
    const bool wantsHelp = command == u"help" || given.contains(u"help"_s);
    if (wrong.isEmpty() && given.contains(u"version"_s))
        return print("zirvo-remote " ZIRVO_VERSION "\n");
    if (wrong.isEmpty() && wantsHelp) {
        const QString subject = command == u"help" ? arguments.value(0) : command;
        const Usage::CommandRow *row = Usage::command(subject);
        if (row != nullptr || subject.isEmpty())
            return print(row != nullptr ? Usage::help(*row) : Usage::help());
        wrong = u"there is no command \"%1\""_s.arg(subject);
    }
    if (wrong.isEmpty())
        wrong = takeAll(given);
    if (wrong.isEmpty())
        wrong = checkCommand(given);
    if (wrong.isEmpty())
        return kGoOn;
    const bool known = Usage::command(command) != nullptr;
    const QString hint = known ? u"zirvo-remote help "_s + command : u"zirvo-remote --help"_s;
    std::fprintf(stderr, "zirvo-remote: %s (see: %s)\n", qPrintable(wrong), qPrintable(hint));
    return ExitCode::Usage;
}

/// Tells options from arguments.
QString Options::sort(const QStringList &words, Given &given)
{
    QStringList plain;
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString &word = words[i];
        if (word == u"--") {
            plain += words.sliced(i + 1);
            break;
        }
        if (!word.startsWith(u"--")) {
            if (looksLikeOption(word))
                return u"unknown option \"%1\""_s.arg(word);
            plain += word;
            continue;
        }
        const qsizetype equals = word.indexOf(u'=');
        const QString name = word.mid(2, equals < 0 ? -1 : equals - 2);
        const Usage::OptionRow *row = Usage::option(name);
        if (row == nullptr)
            return u"unknown option \"--%1\""_s.arg(name);
        if (row->value == nullptr && equals >= 0)
            return u"--%1 takes no value"_s.arg(name);
        const QString value = row->value == nullptr ? QString() : valueOf(words, i, equals);
        if (row->value != nullptr && value.isEmpty())
            return u"--%1 takes a value"_s.arg(name);
        given.insert(name, value);
    }
    command = plain.value(0);
    arguments = plain.mid(1);
    return {};
}

QString Options::takeAll(const Given &given)
{
    quiet = given.contains(u"quiet"_s);
    raw = given.contains(u"raw"_s);
    json = given.contains(u"json"_s);
    dryRun = given.contains(u"dry-run"_s);
    send = given.contains(u"send"_s);
    recordFile = given.value(u"record"_s);
    takeLinks(given);
    QString wrong =
        firstOf({ readWhole(given, u"timeout"_s, 1, timeoutMs), readWhole(given, u"confirm"_s, 1, confirmMs),
                  readWhole(given, u"count"_s, 1, count), readNumber(given, u"for"_s, 0.001, 1e6, seconds),
                  readNumber(given, u"speed"_s, 0, 1e6, speed) });
    if (given.contains(u"no-confirm"_s))
        confirmMs = 0;
    return wrong;
}

/// What is written on the command line goes before the environment.
void Options::takeLinks(const Given &given)
{
    const auto take = [&given](const QString &option, const char *variable, const QString &file) {
        const auto inside = [&file](const QString &folder) {
            return folder.isEmpty() ? QString() : QDir(folder).filePath(file);
        };
        return firstOf({ given.value(option), inside(given.value(u"device-dir"_s)), qEnvironmentVariable(variable),
                         inside(qEnvironmentVariable("ZIRVO_DEVICE_DIR")) });
    };
    link = take(u"link"_s, "ZIRVO_REMOTE_LINK", u"client-remote"_s);
    statusLink = take(u"status-link"_s, "ZIRVO_REMOTE_STATUS_LINK", u"client-status"_s);
    // A folder need not hold it; a device that was named has to open.
    const bool named = given.contains(u"status-link"_s) || !qEnvironmentVariableIsEmpty("ZIRVO_REMOTE_STATUS_LINK");
    if (!named && !QFileInfo::exists(statusLink))
        statusLink.clear();
}

QStringList Options::patterns() const
{
    if (command == u"watch")
        return arguments;
    return command == u"replay" ? arguments.mid(1) : QStringList();
}

QString Options::checkCommand(const Given &given) const
{
    const Usage::CommandRow *row = Usage::command(command);
    if (command.isEmpty())
        return u"no command"_s;
    if (row == nullptr)
        return u"there is no command \"%1\""_s.arg(command);
    for (auto option = given.begin(); option != given.end(); ++option) {
        if (!Usage::takes(*row, *Usage::option(option.key())))
            return u"%1 does not take --%2"_s.arg(command, option.key());
    }
    if (arguments.size() < row->least || arguments.size() > row->most)
        return u"%1 takes %2"_s.arg(command, QString::fromLatin1(row->synopsis));
    const bool namesFile = QByteArrayView(row->synopsis).contains("FILE");
    if (namesFile && !arguments.isEmpty() && arguments[0].isEmpty())
        return u"the name of a file is empty"_s;
    if ((row->usesLink || send) && link.isEmpty())
        return u"no link: give --link or --device-dir"_s;
    if (command == u"replay" && !send && !recordFile.isEmpty())
        return u"replay takes --record only with --send"_s;
    const bool namesSettings = command == u"get" || command == u"set";
    for (const QString &argument : command == u"set" ? arguments.first(1) : arguments) {
        const QByteArray key = argument.toLocal8Bit();
        const QString wrong = namesSettings ? Message::queryProblem(key) : QString();
        if (!wrong.isEmpty())
            return u"\"%1\": %2"_s.arg(QString::fromLocal8Bit(Escaping::brief(key)), wrong);
    }
    QStringList wrongPatterns;
    for (const QString &pattern : patterns())
        wrongPatterns.append(ValuePrinter::patternProblem(pattern));
    if (const QString wrong = firstOf(wrongPatterns); !wrong.isEmpty())
        return wrong;
    return command == u"set" ? Message::setProblem(arguments[0].toLocal8Bit(), arguments[1].toLocal8Bit()) : QString();
}

} // namespace remote
