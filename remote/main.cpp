#include "Command.h"
#include "Options.h"
#include "Session.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>

#include <sys/signalfd.h>

using namespace Qt::StringLiterals;

namespace {

/// Turns the signals that end a program into something readable. A reader of standard output that has gone shows when
/// writing.
int takeEndSignals()
{
    sigset_t endSignals;
    sigemptyset(&endSignals);
    sigaddset(&endSignals, SIGINT);
    sigaddset(&endSignals, SIGTERM);
    sigprocmask(SIG_BLOCK, &endSignals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    return signalfd(-1, &endSignals, SFD_CLOEXEC);
}

/// Ends with what went wrong and what had been done.
void abandon(Session &session, const Command &command, const QString &reason)
{
    session.output().error(reason);
    if (!command.progress().isEmpty())
        session.output().error(command.progress());
    QCoreApplication::exit(ExitCode::NoAnswer);
}

int run(Session &session)
{
    const QSocketNotifier endNotifier(takeEndSignals(), QSocketNotifier::Read);
    const auto command = Command::create(session);
    QObject::connect(command.get(), &Command::finished, &QCoreApplication::exit);
    QObject::connect(&endNotifier, &QSocketNotifier::activated, command.get(), [&session, &command] {
        if (command->isEndless())
            QCoreApplication::exit(ExitCode::Fine);
        else
            abandon(session, *command, u"interrupted"_s);
    });
    QObject::connect(&session, &Session::linkLost, command.get(), [&session, &command](const QByteArray &name) {
        abandon(session, *command, u"%1 link lost"_s.arg(QString::fromLatin1(name)));
    });
    QObject::connect(&session.recorder(), &RecordingWriter::failed, command.get(),
                     [&session, &command](const QString &reason) { abandon(session, *command, reason); });
    QMetaObject::invokeMethod(command.get(), &Command::start, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Options options;
    const int exitCode = options.read(QCoreApplication::arguments());
    if (exitCode >= 0)
        return exitCode;

    Session session(options);
    if (const QString wrong = session.openRecording(); !wrong.isEmpty()) {
        session.output().error(wrong);
        return ExitCode::Usage;
    }
    if (const QString wrong = session.openLinks(); !wrong.isEmpty()) {
        session.output().error(wrong);
        return ExitCode::NoAnswer;
    }
    return run(session);
}
