#include "common/EndSignals.h"
#include "remote/commands/Command.h"
#include "remote/commands/CommandFactory.h"
#include "remote/commands/CommandLine.h"
#include "remote/commands/Session.h"

#include <QCoreApplication>

#include <csignal>
#include <optional>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace remote;

namespace {

/// Replaces closed standard streams: otherwise the next file that is opened would become one, and a link would get the
/// output. The replacements are read-only, so that writing still fails.
void fillClosedStreams()
{
    int file = 0;
    while (file >= 0 && file <= STDERR_FILENO)
        file = ::open("/dev/null", O_RDONLY);
    if (file > STDERR_FILENO)
        ::close(file);
}

/// Ends with the reason and the progress so far.
void abandon(Session &session, const Command &command, const QString &reason)
{
    session.output().error(reason);
    if (!command.progress().isEmpty())
        session.output().error(command.progress());
    QCoreApplication::exit(ExitCode::NoAnswer);
}

int run(Session &session, Command &command, const EndSignals &endSignals)
{
    QObject::connect(&command, &Command::finished, &QCoreApplication::exit);
    QObject::connect(&endSignals, &EndSignals::arrived, &command, [&session, &command] {
        if (command.isEndless())
            QCoreApplication::exit(ExitCode::Fine);
        else
            abandon(session, command, u"interrupted"_s);
    });
    QObject::connect(&session, &Session::linkLost, &command, [&session, &command](const QByteArray &name) {
        abandon(session, command, u"%1 link lost"_s.arg(QString::fromLatin1(name)));
    });
    QObject::connect(&session.recorder(), &RecordingWriter::failed, &command,
                     [&session, &command](const QString &reason) { abandon(session, command, reason); });
    const auto begin = [&session, &command] {
        session.reportPresence();
        command.start();
    };
    QMetaObject::invokeMethod(&command, begin, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

/// Reads the input file and creates the recording. @return the exit code of a failure, once it is reported
std::optional<int> openFiles(Session &session, Command &command)
{
    const QString wrong = command.readInput();
    if (!wrong.isEmpty() && !EndSignals::haveArrived())
        session.output().error(wrong);
    std::optional<int> exitCode = wrong.isEmpty() ? session.openRecording() : ExitCode::Usage;
    if (EndSignals::haveArrived()) {
        session.output().error(u"interrupted"_s);
        exitCode = ExitCode::NoAnswer;
    }
    return exitCode;
}

/// A recording replaces an older one only once the links are open and the input file is good.
int prepareAndRun(Session &session)
{
    // Writes report when a reader has gone or a file has reached its limit.
    const EndSignals endSignals({ SIGINT, SIGTERM }, { SIGPIPE, SIGXFSZ });
    if (const QString wrong = session.openLinks(); !wrong.isEmpty()) {
        session.output().error(wrong);
        return ExitCode::NoAnswer;
    }
    const auto command = createCommand(session);
    if (const auto exitCode = openFiles(session, *command))
        return *exitCode;
    const int exitCode = run(session, *command, endSignals);
    if (session.recorder().close())
        return exitCode;
    session.output().error(session.recorder().file().problem());
    return ExitCode::NoAnswer;
}

} // namespace

int main(int argc, char *argv[])
{
    fillClosedStreams();
    const QCoreApplication application(argc, argv);
    CommandLine commandLine;
    const int exitCode = commandLine.read(QCoreApplication::arguments());
    if (exitCode >= 0)
        return exitCode;
    Session session(commandLine.options());
    return prepareAndRun(session);
}
