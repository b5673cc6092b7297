#pragma once

#include "remote/commands/ExitCode.h"
#include "remote/commands/Session.h"

#include <functional>

namespace remote {

class Recording;
class SettingsReader;

/// One command of the command line. It runs in the event loop and ends with an exit code.
class Command : public QObject
{
    Q_OBJECT

public:
    explicit Command(Session &session) : m_session(session) {}

    /// Reads the input file, if the command has one. @return what is wrong; empty if nothing is
    [[nodiscard]] virtual QString readInput() { return {}; }
    virtual void start() = 0;
    /// The progress so far, for the message of an interrupted command; empty if there is none.
    [[nodiscard]] virtual QString progress() const { return {}; }
    /// Whether an interruption is its normal end.
    [[nodiscard]] virtual bool isEndless() const { return false; }
    /// Whether it is an error if the reader of standard output closes early.
    [[nodiscard]] virtual bool needsReader() const { return false; }

Q_SIGNALS:
    /// Emitted once; there is no output afterwards.
    void finished(int exitCode);

protected:
    [[nodiscard]] Session &session() { return m_session; }
    [[nodiscard]] const Options &options() const { return m_session.options(); }
    [[nodiscard]] Output &output() { return m_session.output(); }
    /// Ends with @p exitCode, or with NoAnswer if standard output failed.
    void end(int exitCode);
    /// Queries the channel addresses, without duplicates; ends the command if there are none.
    void askForChannels(const std::function<void(const QByteArrayList &)> &handler);
    /// Ends after the time that the options name, if they name one.
    void endInTime();
    /// Shows how far @p reader is while it reads.
    void showProgress(const SettingsReader &reader);
    /// Reports that the head stopped answering, and ends.
    void endSilent(const QString &what);
    [[nodiscard]] bool hasEnded() const { return m_ended; }
    /// Opens the recording to replay; reports an incomplete last line. @return what is wrong; empty if nothing is
    [[nodiscard]] QString openInput(Recording &recording);

private:
    [[nodiscard]] bool hasLostOutput();

    Session &m_session;
    bool m_ended = false;
};

} // namespace remote
