#include "remote/commands/ResendCommand.h"

#include "remote/wire/Escaping.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

constexpr qsizetype kMaxBytes = 64 * InputFile::kMebibyte;

constexpr int kMaxReported = 10;

/// Why @p request cannot be sent; empty if it can.
QString problem(const Message &request)
{
    QString wrong = Message::queryProblem(request.key());
    if (!wrong.isEmpty() || request.data.isEmpty())
        return wrong;
    return Message::setProblem(request.key(), request.data);
}

} // namespace

QString ResendCommand::readInput()
{
    Recording recording;
    QString wrong = openInput(recording);
    if (wrong.isEmpty() && !pair(recording))
        wrong = u"%1: more requests than can be sent again at a time"_s.arg(options().arguments[0]);
    return wrong;
}

void ResendCommand::start()
{
    m_pace.start();
    sendNext();
}

QString ResendCommand::progress() const
{
    const QString text =
        u"%1 of %2 requests answered, %3 differently"_s.arg(m_answered).arg(m_requests.size()).arg(m_different);
    return m_skipped == 0 ? text : text + u", %1 skipped"_s.arg(m_skipped);
}

/// Matches recorded answers to requests: those of one key come in the order of the requests.
/// @return false if they would take too much memory
bool ResendCommand::pair(Recording &recording)
{
    QHash<QByteArray, QList<qsizetype>> unanswered; // positions
    qsizetype bytes = 0;
    while (const auto frame = recording.next()) {
        const auto message = frame->link == "remote" ? Message::parse(frame->frame) : std::nullopt;
        if (!message || message->isAnswer() != frame->fromHead)
            continue;
        bytes += frame->frame.size() + qsizetype(sizeof(Request));
        if (bytes > kMaxBytes)
            return false;
        if (const QString wrong = frame->fromHead ? QString() : problem(*message); !wrong.isEmpty()) {
            skip(message->key(), wrong);
            continue;
        }
        QList<qsizetype> &waiting = unanswered[message->key()];
        if (!frame->fromHead) {
            waiting.append(m_requests.size());
            m_requests.append({ Recording::dueMs(*frame, options().speed), *message, {} });
        } else if (!waiting.isEmpty()) {
            m_requests[waiting.takeFirst()].answer = frame->frame;
        }
    }
    return true;
}

void ResendCommand::skip(const QByteArray &key, const QString &why)
{
    ++m_skipped;
    if (m_skipped <= kMaxReported)
        output().error(u"%1: %2, skipped"_s.arg(QString::fromLocal8Bit(Escaping::brief(key)), why));
}

void ResendCommand::sendNext()
{
    if (m_answered == m_requests.size()) {
        output().line(progress().toLocal8Bit());
        return end(m_different == 0 && m_skipped == 0 ? ExitCode::Fine : ExitCode::Refused);
    }
    m_pace.await(m_requests[m_answered].dueMs, this, [this] { send(m_requests[m_answered]); });
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
    const auto shown = [](bool no, const QByteArray &data) { return no ? "refused" : Escaping::printable(data); };
    if (recorded) {
        const QByteArray then = shown(recorded->kind == Message::Kind::Refused, recorded->data);
        const QByteArray now = shown(refused, answer.data);
        if (then != now) {
            ++m_different;
            output().line(key + " was " + then + ", now " + now);
        }
    }
    sendNext();
}

} // namespace remote
