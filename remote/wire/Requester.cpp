#include "remote/wire/Requester.h"

#include "remote/wire/ClientLink.h"

#include <algorithm>

namespace remote {

namespace {

constexpr qsizetype kMaxUnanswered = 16;

} // namespace

Requester::Requester(ClientLink &link, int timeoutMs) : m_link(link)
{
    m_timer.setInterval(timeoutMs);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Requester::endSilence);
    connect(&link, &ClientLink::received, this, &Requester::take);
}

void Requester::query(const QByteArray &key, Handler handler) { add({ key, Message::query(key), std::move(handler) }); }

void Requester::set(const QByteArray &key, const QByteArray &value, Handler handler)
{
    add({ key, Message::set(key, value), std::move(handler) });
}

void Requester::add(Request request)
{
    m_waiting.append(std::move(request));
    sendWaiting();
}

void Requester::sendWaiting()
{
    while (!m_waiting.isEmpty() && m_unanswered.size() < kMaxUnanswered) {
        if (m_unanswered.isEmpty())
            m_timer.start();
        m_unanswered.append(m_waiting.takeFirst());
        m_link.send(m_unanswered.constLast().frame);
    }
}

void Requester::take(const QByteArray &frame)
{
    const auto message = Message::parse(frame);
    if (!message || message->kind == Message::Kind::Query)
        return;
    if (!message->isAnswer()) {
        Q_EMIT pushed(message->key(), message->data);
        return;
    }
    const auto request = std::ranges::find(m_unanswered, message->key(), &Request::key);
    if (request == m_unanswered.end())
        return; // a duplicate, or an answer to an earlier client
    const Handler handler = request->handler;
    m_unanswered.erase(request);
    if (m_unanswered.isEmpty())
        m_timer.stop();
    else
        m_timer.start();
    sendWaiting();
    using State = Answer::State;
    handler({ message->kind == Message::Kind::Refused ? State::Refused : State::Acknowledged, message->data });
}

/// The link loses no answers, so a time-out means that the head is gone: it ends all requests and is reported once.
void Requester::endSilence()
{
    const Handler handler = m_unanswered.constFirst().handler;
    m_unanswered.clear();
    m_waiting.clear();
    handler({});
}

} // namespace remote
