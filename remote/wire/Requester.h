#pragma once

#include "remote/wire/Message.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <functional>

namespace remote {

class ClientLink;

/// Asks and sets on the remote link, many at a time, and gives each its answer.
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

    /// @param timeoutMs how long the head may say nothing while something is unanswered
    Requester(ClientLink &link, int timeoutMs);

    /// Asks for the value of @p key, "ADDRESS:MNEMONIC".
    void query(const QByteArray &key, Handler handler);
    /// Sets @p key; the answer tells that the head took it, not yet that the card did. Never sent twice.
    void set(const QByteArray &key, const QByteArray &value, Handler handler);

Q_SIGNALS:
    /// A value that the head told unasked.
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
    QList<Request> m_unanswered; ///< in the order sent, which is the order of the answers of one key
};

} // namespace remote
