#pragma once

#include "remote/commands/ExitCode.h"
#include "remote/commands/Session.h"

#include <functional>
#include <memory>

namespace remote {

class Recording;

/// One command of the command line. It works from the event loop and tells its exit code at the end.
class Command : public QObject
{
    Q_OBJECT

public:
    explicit Command(Session &session) : m_session(session) {}

    /// The command that the options of @p session name.
    [[nodiscard]] static std::unique_ptr<Command> create(Session &session);

    /// Reads the file that the command works from, if there is one. @return what is wrong; empty if nothing is
    [[nodiscard]] virtual QString readInput() { return {}; }
    virtual void start() = 0;
    /// What has been done so far, for a command that is cut short; empty if there is nothing to tell.
    [[nodiscard]] virtual QString progress() const { return {}; }
    /// Whether an interruption is its ordinary end.
    [[nodiscard]] virtual bool isEndless() const { return false; }
    /// Whether a reader that leaves early misses what the command is for.
    [[nodiscard]] virtual bool needsReader() const { return false; }

Q_SIGNALS:
    /// Comes once; nothing is put out afterwards.
    void finished(int exitCode);

protected:
    [[nodiscard]] Session &session() { return m_session; }
    [[nodiscard]] const Options &options() const { return m_session.options(); }
    [[nodiscard]] Output &output() { return m_session.output(); }
    /// Ends with @p exitCode, or with that of an output that took not everything.
    void end(int exitCode);
    /// Asks for the addresses of the channels, each once; ends when there are none to be had.
    void askForChannels(const std::function<void(const QByteArrayList &)> &handler);
    /// Tells that the head stopped answering, and ends.
    void endSilent(const QString &what);
    [[nodiscard]] bool hasEnded() const { return m_ended; }
    /// Opens the recording that the command works from. @return what is wrong; empty if nothing is
    [[nodiscard]] QString openInput(Recording &recording);

private:
    [[nodiscard]] bool hasLostOutput();

    Session &m_session;
    bool m_ended = false;
};

} // namespace remote
