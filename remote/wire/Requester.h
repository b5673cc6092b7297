#pragma once

#include "remote/wire/Message.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <functional>

namespace remote {

class ClientLink;

/// Sends queries and sets on the remote link, several in flight at a time, and matches the answers to them.
class Requester : public QObject
{
    Q_OBJECT

public:
    struct Answer
    {
        enum class State { Acknowledged, Refused, Silent };
        State state = State::Silent;
        QByteArray data;
    };
    using Handler = std::function<void(const Answer &)>;

    /// @param timeoutMs how long the head may stay silent while a request is unanswered
    Requester(ClientLink &link, int timeoutMs);

    /// Queries the value of @p key, "ADDRESS:MNEMONIC".
    void query(const QByteArray &key, Handler handler);
    /// Sets @p key. The answer comes from the head, before the card has the value. There is no retry.
    void set(const QByteArray &key, const QByteArray &value, Handler handler);

Q_SIGNALS:
    /// An unsolicited value.
    void pushed(const QByteArray &key, const QByteArray &value);

private:
    struct Request
    {
        QByteArray key;
        QByteArray frame;
        Handler handler;
    };

    void add(Request request);
    void sendWaiting();
    void take(const QByteArray &frame);
    void endSilence();

    ClientLink &m_link;
    QTimer m_timer;
    QList<Request> m_waiting;
    QList<Request> m_unanswered; ///< in the order sent, in which the answers of one key come
};

} // namespace remote
