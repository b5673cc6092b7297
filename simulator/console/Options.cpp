#include "simulator/console/Options.h"

#include "simulator/chassis/Family.h"
#include "simulator/console/Console.h"
#include "simulator/units/SettingRow.h"

#include <CLI/CLI.hpp>

#include <cstdio>

namespace sim {

namespace {

constexpr int kGoOn = -1;
constexpr int kUsageError = 2;
constexpr std::size_t kHelpColumn = 26;

const char kDescription[] = "A ZIRVO chassis on pseudo-terminals. It makes ttyUSB0 to ttyUSB9 in the given folder\n"
                            "and answers on the command link (ttyUSB0, older boards ttyUSB3) as a chassis would,\n"
                            "and on the spectral link (ttyUSB2) as the card behind it. client-remote and\n"
                            "client-status are the far ends of the remote links (ttyUSB4 and 5, older 8 and 9).\n"
                            "\"ready\" on standard output says that the links are there.\n\n"
                            "  zirvo-chassis-sim --device-dir /tmp/head --boot-seconds 0 --trace /tmp/head/trace\n";

const char kScripts[] = "A script holds the same commands, each as \"@SECONDS command\" (since the start), or\n"
                        "bare after \"wait SECONDS\"; \"#\" begins a comment:\n\n"
                        "  @10 refuse R1:FREQ 1\n"
                        "  wait 5\n"
                        "  power-cycle 3";

constexpr auto kFlags = std::to_array<const char *>({ "--help", "--list-families" });

void print(std::FILE *stream, const QByteArray &text)
{
    std::fputs(text.constData(), stream);
    std::fflush(stream);
}

QByteArray families()
{
    QByteArray lines;
    for (const QString &name : Family::builtIn()) {
        QString error;
        const auto family = Family::load(name, error);
        lines += "  " + name.toLatin1().leftJustified(16) + (family ? family->title.toUtf8() : error.toUtf8()) + '\n';
    }
    return lines;
}

/// Values stay text for CLI11: a negative number must not pass for an option, and each check has its own message.
void addOptions(CLI::App &app)
{
    const auto add = [&app](const char *name, const char *value, const char *text) {
        app.add_option(name)->description(text)->type_name(value)->take_last();
    };
    app.set_help_flag();
    app.allow_extras();
    app.get_formatter()->column_width(kHelpColumn);
    add("--device-dir", "DIR", "Folder for the links; made if missing. Required.");
    add("--family", "NAME|FILE", "Kind of chassis: a name listed below or a file. Default demod-k3050.");
    add("--boot-seconds", "S", "Time from power-on to the first answer. Default 3.");
    add("--report-hz", "HZ", "Status reports a second of each channel, 0.1 to 50. Default 5.");
    add("--seed", "N", "Start of all randomness. Default 1.");
    add("--presets", "FILE", "File that keeps the presets from run to run.");
    add("--script", "FILE", "Console commands with their times.");
    add("--trace", "FILE", "Writes every frame to FILE.");
    app.add_flag("--list-families")->description("Lists the families and ends.");
    app.add_flag("--help")->description("This text.");
    app.footer([] {
        const QByteArray text = "Families:\n" + families() +
                                "\nCommands on standard input, each answered with a line:\n" + Console::overview() +
                                '\n' + kScripts;
        return text.toStdString();
    });
}

/// The last value given; nothing without one.
std::optional<QString> value(const CLI::App &app, const char *option)
{
    const auto &values = app.get_option(option)->results();
    return values.empty() ? std::nullopt : std::optional(QString::fromStdString(values.back()));
}

/// The arguments behind the program's name as CLI11 wants them: the last one first, and an empty value ("--trace=") as
/// an argument of its own, for behind "=" CLI11 takes it for none.
std::vector<std::string> forParser(const QStringList &arguments)
{
    std::vector<std::string> reversed;
    for (auto argument = arguments.crbegin(); argument != arguments.crend() - 1; ++argument) {
        const bool hasEmptyValue = argument->startsWith(QStringLiteral("--")) && argument->endsWith(u'=');
        if (hasEmptyValue)
            reversed.emplace_back();
        reversed.push_back((hasEmptyValue ? argument->chopped(1) : *argument).toStdString());
    }
    return reversed;
}

/// What CLI11 could not place: names of unknown options, and arguments that are no option at all.
struct Leftovers
{
    QStringList unknown;
    QStringList unexpected;
};

Leftovers leftovers(const CLI::App &app)
{
    Leftovers all;
    bool optionsEnd = false;
    for (const std::string &text : app.remaining()) {
        const QString argument = QString::fromStdString(text);
        if (optionsEnd || !argument.startsWith(u'-') || argument == QStringLiteral("-"))
            all.unexpected.append(argument);
        else if (argument == QStringLiteral("--"))
            optionsEnd = true;
        else if (argument.startsWith(QStringLiteral("--")))
            all.unknown.append(argument.mid(2).section(u'=', 0, 0));
        else
            all.unknown.append(argument.mid(1).split(QString(), Qt::SkipEmptyParts));
    }
    return all;
}

/// What is wrong with the form of the arguments; empty if every option is known and has a value if it needs one.
QString parse(CLI::App &app, const QStringList &arguments)
{
    try {
        app.parse(forParser(arguments));
    } catch (const CLI::ParseError &) {
        // With text for every value and nothing required, only this can be missing.
        return QStringLiteral("Missing value after '%1'.").arg(arguments.constLast());
    }
    for (const char *flag : kFlags) {
        if (value(app, flag).value_or(QStringLiteral("true")) != QStringLiteral("true"))
            return QStringLiteral("Unexpected value after '%1'.").arg(QLatin1StringView(flag));
    }
    const QStringList unknown = leftovers(app).unknown;
    if (unknown.isEmpty())
        return {};
    return unknown.size() == 1 ? QStringLiteral("Unknown option '%1'.").arg(unknown.constFirst())
                               : QStringLiteral("Unknown options: %1.").arg(unknown.join(QStringLiteral(", ")));
}

/// What is wrong with a number between two limits; empty if it was read or not given.
QString readNumber(const CLI::App &app, const char *option, double low, double high, double &number)
{
    const auto text = value(app, option);
    double read = 0;
    if (text && (!readDecimal(text->toUtf8(), read) || read < low || read > high))
        return QStringLiteral("%1 takes a number from %2 to %3").arg(QLatin1StringView(option)).arg(low).arg(high);
    number = text ? read : number;
    return {};
}

QString readAll(const CLI::App &app, Options &options)
{
    options.setup.deviceDir = value(app, "--device-dir").value_or(QString());
    options.setup.presetsFile = value(app, "--presets").value_or(QString());
    options.setup.traceFile = value(app, "--trace").value_or(QString());
    options.scriptFile = value(app, "--script").value_or(QString());
    options.family = value(app, "--family").value_or(options.family);
    if (const QStringList unexpected = leftovers(app).unexpected; !unexpected.isEmpty())
        return QStringLiteral("unexpected \"%1\"").arg(unexpected.constFirst());
    if (options.setup.deviceDir.isEmpty())
        return QStringLiteral("--device-dir is required");
    bool seedRead = true;
    if (const auto seed = value(app, "--seed"))
        options.setup.seed = seed->toUInt(&seedRead);
    if (!seedRead)
        return QStringLiteral("--seed takes a whole number");
    const QString wrong = readNumber(app, "--boot-seconds", 0, 3600, options.setup.bootSeconds);
    return wrong.isEmpty() ? readNumber(app, "--report-hz", 0.1, 50, options.setup.reportHz) : wrong;
}

} // namespace

int Options::read(const QStringList &arguments)
{
    CLI::App app(kDescription, "zirvo-chassis-sim");
    addOptions(app);
    QString wrong = parse(app, arguments);
    if (wrong.isEmpty() && value(app, "--help")) {
        print(stdout, QByteArray::fromStdString(app.help()));
        return 0;
    }
    if (wrong.isEmpty() && value(app, "--list-families")) {
        print(stdout, families());
        return 0;
    }
    if (wrong.isEmpty())
        wrong = readAll(app, *this);
    if (wrong.isEmpty())
        return kGoOn;
    print(stderr, "zirvo-chassis-sim: " + wrong.toUtf8() + " (see --help)\n");
    return kUsageError;
}

} // namespace sim
