#pragma once

#include "remote/commands/Options.h"

#include <functional>
#include <memory>

namespace CLI {
class App;
} // namespace CLI

namespace remote {

/// Reads the command line. Options may stand anywhere, before the command too.
class CommandLine
{
public:
    CommandLine();
    ~CommandLine();
    Q_DISABLE_COPY_MOVE(CommandLine)

    /// Reads @p words, the program's name first. -1 to go on, otherwise the exit code: help was printed, or what is
    /// wrong went to standard error.
    [[nodiscard]] int read(const QStringList &words);
    [[nodiscard]] const Options &options() const { return m_options; }

private:
    /// Reads the text behind an option. @return what is wrong; empty if nothing is
    using Reader = std::function<QString(const QString &text)>;

    void addCommands();
    void addOptions();
    /// @param commands that take the option; nullptr for all
    void addOption(const char *name, const char *valueName, const char *commands, const Reader &reader,
                   const char *description);
    void addFlag(const char *name, const char *commands, bool &target, const char *description);

    [[nodiscard]] QString parse(const QStringList &words);
    [[nodiscard]] QString takeWords();
    /// The command of that name; nullptr if there is none, or if it is only the one that prints help.
    [[nodiscard]] const CLI::App *command(const QString &name) const;
    /// Why the command cannot have what was given; empty if it can.
    [[nodiscard]] QString commandProblem() const;

    Options m_options;
    QString m_deviceFolder;
    bool m_wantsVersion = false;
    bool m_wantsHelp = false;
    bool m_noConfirm = false;
    QString m_wrongValue; ///< of the first option with one
    std::unique_ptr<CLI::App> m_app;
};

} // namespace remote
