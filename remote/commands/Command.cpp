#include "remote/commands/Command.h"

#include "common/EndSignals.h"
#include "remote/files/Recording.h"
#include "remote/wire/SettingsReader.h"

#include <QSet>

#include <cerrno>
#include <chrono>

using namespace Qt::StringLiterals;

namespace remote {

void Command::end(int exitCode)
{
    if (m_ended)
        return;
    m_ended = true;
    if (EndSignals::haveArrived())
        return; // the interruption decides the exit code
    Q_EMIT finished(hasLostOutput() ? ExitCode::NoAnswer : exitCode);
}

bool Command::hasLostOutput()
{
    if (output().isOpen() || (output().fault() == EPIPE && !needsReader()))
        return false;
    if (output().fault() == EPIPE)
        output().error(u"the reader of standard output has gone"_s);
    return true;
}

void Command::askForChannels(const std::function<void(const QByteArrayList &)> &handler)
{
    session().requester().query("U0:CHANS", [this, handler](const Requester::Answer &answer) {
        using State = Requester::Answer::State;
        if (answer.state == State::Silent)
            return endSilent(u"U0:CHANS"_s);
        if (answer.state == State::Refused || !Message::isKnown(answer.data)) {
            output().error(u"the head knows no channels yet"_s);
            return end(ExitCode::Refused);
        }
        QByteArrayList channels;
        QSet<QByteArray> known{ QByteArray() };
        for (const QByteArray &address : answer.data.split(',')) {
            if (!known.contains(address))
                channels.append(address);
            known.insert(address);
        }
        handler(channels);
    });
}

void Command::endInTime()
{
    if (options().seconds > 0)
        QTimer::singleShot(std::chrono::milliseconds(qint64(options().seconds * 1000)), this,
                           [this] { end(ExitCode::Fine); });
}

void Command::showProgress(const SettingsReader &reader)
{
    connect(&reader, &SettingsReader::progressed, this,
            [this](qsizetype done, qsizetype all) { output().progress(u"reading"_s, done, all); });
}

QString Command::openInput(Recording &recording)
{
    const QString &path = options().arguments[0];
    QString wrong = recording.open(path);
    if (wrong.isEmpty() && recording.isCutOff())
        output().error(u"%1: the last line is cut off and left out"_s.arg(path));
    return wrong;
}

void Command::endSilent(const QString &what)
{
    output().error(u"%1: no answer within %2 ms"_s.arg(what).arg(options().timeoutMs));
    if (!progress().isEmpty())
        output().error(progress());
    end(ExitCode::NoAnswer);
}

} // namespace remote
