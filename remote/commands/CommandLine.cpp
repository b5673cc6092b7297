#include "remote/commands/CommandLine.h"

#include "remote/commands/CommandRows.h"
#include "remote/commands/ExitCode.h"
#include "remote/commands/HelpText.h"
#include "remote/commands/Words.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

constexpr int kGoOn = -1;
constexpr int kMaxWords = 1 << 20; // more than a command line can hold

int print(const QByteArray &text)
{
    if (std::fputs(text.constData(), stdout) >= 0 && std::fflush(stdout) == 0)
        return ExitCode::Fine;
    std::fprintf(stderr, "zirvo-remote: standard output: %s\n", std::strerror(errno));
    return ExitCode::NoAnswer;
}

auto readText(QString &target)
{
    return [&target](const QString &text) {
        target = text;
        return QString();
    };
}

auto readNumber(double least, double most, double &target)
{
    return [least, most, &target](const QString &text) {
        bool read = false;
        const double value = text.toDouble(&read);
        if (!read || !(value >= least && value <= most))
            return u"takes a number from %1 to %2"_s.arg(least, 0, 'g', 10).arg(most, 0, 'g', 10);
        target = value;
        return QString();
    };
}

auto readWhole(int &target)
{
    return [&target](const QString &text) {
        double value = 0;
        QString wrong = readNumber(1, 1e9, value)(text);
        if (wrong.isEmpty() && value != std::floor(value))
            return u"takes a whole number"_s;
        target = int(value);
        return wrong;
    };
}

} // namespace

CommandLine::CommandLine()
    : m_app(std::make_unique<CLI::App>("The client's side of a display head's remote links.", "zirvo-remote"))
{
    m_app->set_help_flag(); // read() prints it, as for the command "help"
    m_app->footer(kExitCodeText);
    m_app->allow_extras();
    m_app->fallthrough();
    m_app->require_subcommand(0, 1);
    addCommands();
    addOptions();
}

CommandLine::~CommandLine() = default;

void CommandLine::addCommands()
{
    for (const CommandRow &row : kCommands) {
        CLI::App *command = m_app->add_subcommand(row.name, row.summary);
        command->footer(row.text);
        // An open-ended list would split a pattern in brackets.
        command->add_option("arguments", [](const CLI::results_t &) { return true; })
            ->expected(kMaxWords)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
            ->option_text(row.synopsis);
    }
}

void CommandLine::addOptions()
{
    Options &o = m_options;
    addOption("--link", "PATH", nullptr, readText(o.link), "device of the remote link (or ZIRVO_REMOTE_LINK)");
    addOption("--status-link", "PATH", nullptr, readText(o.statusLink),
              "device of the eye-and-status link (or ZIRVO_REMOTE_STATUS_LINK)");
    addOption("--device-dir", "DIR", nullptr, readText(m_deviceFolder),
              "both in DIR: client-remote and client-status (or ZIRVO_DEVICE_DIR)");
    addOption("--timeout", "MS", nullptr, readWhole(o.timeoutMs), "time for an answer; default 1500");
    addOption("--record", "FILE", "get set watch dump apply replay", readText(o.recordFile),
              "records the traffic of the command");
    addFlag("--quiet", nullptr, o.quiet, "no notes and no progress");
    addFlag("--raw", "get", o.raw, "prints the values alone");
    addOption("--confirm", "MS", "set apply", readWhole(o.confirmMs), "time for the card's verdict; default 2500");
    addFlag("--no-confirm", "set", m_noConfirm, "does not wait for the card");
    addFlag("--json", "watch replay apply", o.json, "a JSON object a line; for apply, the report");
    addFlag("--dry-run", "apply", o.dryRun, "shows what would be sent");
    addOption("--count", "N", "watch record", readWhole(o.count), "ends after N values or frames");
    addOption("--for", "SECONDS", "watch record", readNumber(0.001, 1e6, o.seconds), "ends after that time");
    addOption("--speed", "X", "replay", readNumber(0, 1e6, o.speed),
              "times the recorded pace; 0 for at once; default 1");
    addFlag("--send", "replay", o.send, "sends the client's recorded requests to the head");
    addFlag("--help", nullptr, m_wantsHelp, "this text");
    addFlag("--version", nullptr, m_wantsVersion, "the version");
}

void CommandLine::addOption(const char *name, const char *valueName, const char *commands, const Reader &reader,
                            const char *description)
{
    const auto take = [this, name = QString::fromLatin1(name), reader](const CLI::results_t &given) {
        const QString text = Words::unmarked(given.back());
        if (text.isEmpty())
            throw CLI::ArgumentMismatch::TypedAtLeast(name.toStdString(), 1, {});
        const QString wrong = reader(text);
        if (!wrong.isEmpty() && m_wrongValue.isEmpty())
            m_wrongValue = name + u' ' + wrong;
        return true;
    };
    CLI::Option *option = m_app->add_option(name, take, description)->type_name(valueName)->take_last();
    if (commands != nullptr)
        option->group(commands);
}

void CommandLine::addFlag(const char *name, const char *commands, bool &target, const char *description)
{
    CLI::Option *option = m_app->add_flag(name, target, description)->disable_flag_override();
    if (commands != nullptr)
        option->group(commands);
}

int CommandLine::read(const QStringList &words)
{
    QString wrong = parse(words.sliced(1));
    if (wrong.isEmpty() && m_wantsVersion)
        return print("zirvo-remote " ZIRVO_VERSION "\n");
    if (wrong.isEmpty() && (m_wantsHelp || m_options.command == u"help")) {
        const QString subject = m_options.command == u"help" ? m_options.arguments.value(0) : m_options.command;
        if (const CLI::App *app = subject.isEmpty() ? m_app.get() : command(subject))
            return print(HelpText::of(*app));
        wrong = u"there is no command \"%1\""_s.arg(subject);
    }
    if (wrong.isEmpty())
        wrong = m_wrongValue.isEmpty() ? commandProblem() : m_wrongValue;
    if (wrong.isEmpty())
        wrong = m_options.problem();
    if (wrong.isEmpty())
        return kGoOn;
    const bool known = command(m_options.command) != nullptr;
    const QString hint = known ? u"zirvo-remote help "_s + m_options.command : u"zirvo-remote --help"_s;
    std::fprintf(stderr, "zirvo-remote: %s (see: %s)\n", qPrintable(wrong), qPrintable(hint));
    return ExitCode::Usage;
}

QString CommandLine::parse(const QStringList &words)
{
    try {
        m_app->parse(Words::marked(words));
    } catch (const CLI::ArgumentMismatch &mismatch) {
        // "--link: 1 required PATH missing", or of a flag "quiet was given a disallowed flag override"
        const QString said = QString::fromLocal8Bit(mismatch.what());
        return said.startsWith(u"--") ? said.section(u':', 0, 0) + u" takes a value"_s
                                      : u"--"_s + said.section(u' ', 0, 0) + u" takes no value"_s;
    } catch (const CLI::ParseError &error) {
        return QString::fromLocal8Bit(error.what());
    }
    QString wrong = takeWords();
    m_options.chooseLinks(m_deviceFolder);
    if (m_noConfirm)
        m_options.confirmMs = 0;
    return wrong;
}

/// Takes the command and its arguments. @return that there is an unknown option; empty if all are known
QString CommandLine::takeWords()
{
    const auto commands = m_app->get_subcommands();
    std::vector<std::string> arguments = m_app->remaining();
    if (!commands.empty()) {
        const CLI::results_t &own = commands.front()->get_options().front()->results();
        arguments.insert(arguments.end(), own.begin(), own.end());
    }
    QStringList words;
    for (const std::string &argument : arguments) {
        words.append(Words::unmarked(argument));
        if (!Words::isMarked(argument) && Words::looksLikeOption(words.constLast()))
            return u"unknown option \"%1\""_s.arg(
                words.constLast().startsWith(u"--") ? words.constLast().section(u'=', 0, 0) : words.constLast());
    }
    if (!commands.empty())
        words.prepend(QString::fromStdString(commands.front()->get_name()));
    m_options.command = words.value(0);
    m_options.arguments = words.mid(1);
    return {};
}

const CLI::App *CommandLine::command(const QString &name) const
{
    const auto named = m_app->get_subcommands(
        [&name](const CLI::App *command) { return name != u"help" && command->check_name(name.toStdString()); });
    return named.empty() ? nullptr : named.front();
}

QString CommandLine::commandProblem() const
{
    const QString &name = m_options.command;
    const CLI::App *found = command(name);
    if (name.isEmpty())
        return u"no command"_s;
    if (found == nullptr)
        return u"there is no command \"%1\""_s.arg(name);
    for (const CLI::Option *option : std::as_const(*m_app).get_options()) {
        if (option->count() > 0 && !HelpText::takes(*found, *option))
            return u"%1 does not take %2"_s.arg(name, QString::fromStdString(option->get_name()));
    }
    const auto row =
        std::ranges::find_if(kCommands, [&name](const CommandRow &r) { return name == QLatin1String(r.name); });
    if (m_options.arguments.size() < row->least || m_options.arguments.size() > row->most)
        return u"%1 takes %2"_s.arg(name, QString::fromLatin1(row->synopsis));
    return {};
}

} // namespace remote
