#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace remote {

/// The command line of the program.
struct Options
{
    QString command;
    QStringList arguments; ///< of the command

    QString link;       ///< device of the remote link; empty if none was named
    QString statusLink; ///< device of the eye-and-status link; empty if none was named
    int timeoutMs = 1500;
    int confirmMs = 2500; ///< 0 not to wait for the card
    bool quiet = false;
    bool raw = false;
    bool json = false;
    bool dryRun = false;
    bool send = false;
    double speed = 1;
    int count = 0;      ///< 0 for no end
    double seconds = 0; ///< 0 for no end
    QString recordFile;

    /// Reads `arguments`, the program's name first. -1 to go on, otherwise the exit code: help was printed, or what is
    /// wrong went to standard error.
    [[nodiscard]] int read(const QStringList &arguments);

    /// The wildcards that choose what is shown.
    [[nodiscard]] QStringList patterns() const;

private:
    using Given = QHash<QString, QString>;

    [[nodiscard]] QString sort(const QStringList &words, Given &given);
    [[nodiscard]] QString takeAll(const Given &given);
    void takeLinks(const Given &given);
    [[nodiscard]] QString checkCommand(const Given &given) const;
};

} // namespace remote
