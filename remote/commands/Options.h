#pragma once

#include <QString>
#include <QStringList>

namespace remote {

/// What the command line asks for.
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

    /// Completes the links: a named device takes precedence over @p folder, and both over the environment.
    void chooseLinks(const QString &folder);
    /// The wildcards that select what is printed.
    [[nodiscard]] QStringList patterns() const;
    /// Whether the command talks to the head.
    [[nodiscard]] bool usesLink() const;
    /// Why the arguments make no sense for the command; empty if they do.
    [[nodiscard]] QString problem() const;
};

} // namespace remote
