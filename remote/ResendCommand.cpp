#include "ResendCommand.h"

#include "Escaping.h"

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

QString ResendCommand::readInput()
{
    Recording recording;
    QString wrong = recording.read(options().arguments[0]);
    if (wrong.isEmpty())
        pair(recording);
    return wrong;
}

void ResendCommand::start()
{
    m_clock.start();
    sendNext();
}

QString ResendCommand::progress() const
{
    return u"%1 of %2 requests answered, %3 differently"_s.arg(m_answered).arg(m_requests.size()).arg(m_different);
}

/// Gives each recorded request its recorded answer: those of one key come in the order of the requests.
void ResendCommand::pair(const Recording &recording)
{
    for (qsizetype i = 0; i < recording.frames().size(); ++i) {
        const RecordedFrame &frame = recording.frames().at(i);
        const auto message = frame.link == "remote" ? Message::parse(frame.frame) : std::nullopt;
        if (!message)
            continue;
        if (!frame.fromHead && !message->isAnswer())
            m_requests.append({ recording.dueMs(i, options().speed), *message, {} });
        if (!frame.fromHead || !message->isAnswer())
            continue;
        const auto request = std::ranges::find_if(m_requests, [&message](const Request &r) {
            return r.answer.isEmpty() && r.message.key() == message->key();
        });
        if (request != m_requests.end())
            request->answer = frame.frame;
    }
}

void ResendCommand::sendNext()
{
    if (m_answered == m_requests.size()) {
        output().line(progress().toLocal8Bit());
        return end(m_different == 0 ? ExitCode::Fine : ExitCode::Refused);
    }
    const qint64 wait = qMax(qint64(0), m_requests[m_answered].dueMs - m_clock.elapsed());
    QTimer::singleShot(std::chrono::milliseconds(wait), this, [this] { send(m_requests[m_answered]); });
}

void ResendCommand::send(const Request &request)
{
    const auto take = [this, request](const Requester::Answer &answer) { compare(request, answer); };
    const QByteArray key = request.message.key();
    if (request.message.kind == Message::Kind::Query)
        session().requester().query(key, take);
    else
        session().requester().set(key, request.message.data, take);
}

void ResendCommand::compare(const Request &request, const Requester::Answer &answer)
{
    using State = Requester::Answer::State;
    const QByteArray key = request.message.key();
    if (answer.state == State::Silent)
        return endSilent(QString::fromLocal8Bit(key));
    ++m_answered;
    const auto recorded = Message::parse(request.answer);
    const bool refused = answer.state == State::Refused;
    const auto told = [](bool no, const QByteArray &data) { return no ? "refused" : Escaping::printable(data); };
    if (recorded) {
        const QByteArray then = told(recorded->kind == Message::Kind::Refused, recorded->data);
        const QByteArray now = told(refused, answer.data);
        if (then != now) {
            ++m_different;
            output().line(key + " was " + then + ", now " + now);
        }
    }
    sendNext();
}
