#include "remote/commands/HelpText.h"

#include <QByteArrayList>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

namespace remote {

namespace {

bool isForAll(const CLI::Option &option) { return option.get_group() == CLI::OptionDefaults().get_group(); }

QByteArray commandLine(const CLI::App &command)
{
    const QByteArray usage = QByteArray::fromStdString(command.get_name()) + ' ' + HelpText::synopsis(command);
    return "  " + usage.leftJustified(26) + QByteArray::fromStdString(command.get_description()) + '\n';
}

QByteArray optionLine(const CLI::Option &option)
{
    QByteArray name = "  " + QByteArray::fromStdString(option.get_name());
    if (option.get_items_expected_max() > 0)
        name += ' ' + QByteArray::fromStdString(option.get_type_name());
    return name.leftJustified(22) + QByteArray::fromStdString(option.get_description()) + '\n';
}

QByteArray programUsage(const CLI::App &program)
{
    QByteArray text =
        "[OPTIONS] COMMAND ...\n\n" + QByteArray::fromStdString(program.get_description()) + "\n\nCommands:\n";
    for (const CLI::App *command : program.get_subcommands([](const CLI::App *) { return true; }))
        text += commandLine(*command);
    return text + "\nOptions of every command:\n";
}

QByteArray commandUsage(const CLI::App &command)
{
    return QByteArray::fromStdString(command.get_name()) + " [OPTIONS] " + HelpText::synopsis(command) + "\n\n" +
           QByteArray::fromStdString(command.get_footer()) + "\nOptions:\n";
}

} // namespace

QByteArray HelpText::of(const CLI::App &app)
{
    const bool isProgram = app.get_parent() == nullptr;
    const CLI::App &program = isProgram ? app : *app.get_parent();
    QByteArray text = "Usage: zirvo-remote " + (isProgram ? programUsage(app) : commandUsage(app));
    for (const CLI::Option *option : program.get_options()) {
        if (isProgram ? isForAll(*option) : takes(app, *option))
            text += optionLine(*option);
    }
    return text + QByteArray::fromStdString(program.get_footer());
}

QByteArray HelpText::synopsis(const CLI::App &command)
{
    return QByteArray::fromStdString(command.get_options().front()->get_option_text());
}

bool HelpText::takes(const CLI::App &command, const CLI::Option &option)
{
    const QByteArrayList commands = QByteArray::fromStdString(option.get_group()).split(' ');
    return isForAll(option) || commands.contains(QByteArray::fromStdString(command.get_name()));
}

} // namespace remote
