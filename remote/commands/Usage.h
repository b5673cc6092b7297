#pragma once

#include <QByteArray>
#include <QString>

#include <span>

/// What can be written on the command line, and the texts that tell it.
namespace remote::Usage {

struct CommandRow
{
    const char *name;
    const char *synopsis;
    const char *summary;
    const char *text; ///< what its own help adds
    int least;        ///< arguments
    int most;
    bool usesLink;
};

struct OptionRow
{
    const char *name;
    const char *value;    ///< what follows it; nullptr for nothing
    const char *commands; ///< that take it, between blanks; nullptr for all
    const char *text;
};

/// The row of a command or an option; nullptr if there is none.
[[nodiscard]] const CommandRow *command(const QString &name);
[[nodiscard]] const OptionRow *option(const QString &name);
[[nodiscard]] bool takes(const CommandRow &command, const OptionRow &option);

/// The help of the program, or of one command.
[[nodiscard]] QByteArray help();
[[nodiscard]] QByteArray help(const CommandRow &command);

} // namespace remote::Usage
