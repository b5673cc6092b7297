#pragma once

#include "remote/commands/Command.h"
#include "remote/commands/Pace.h"
#include "remote/files/Recording.h"

namespace remote {

/// Repeats the client's requests of a recording and compares the answers.
class ResendCommand : public Command
{
    Q_OBJECT

public:
    using Command::Command;
    [[nodiscard]] QString readInput() override;
    void start() override;
    [[nodiscard]] QString progress() const override;

private:
    struct Request
    {
        qint64 dueMs = 0;
        Message message;
        QByteArray answer; ///< recorded; empty if there is none
    };

    [[nodiscard]] bool pair(Recording &recording);
    void skip(const QByteArray &key, const QString &why);
    void sendNext();
    void send(const Request &request);
    void compare(const Request &request, const Requester::Answer &answer);

    QList<Request> m_requests;
    qsizetype m_answered = 0;
    qsizetype m_different = 0;
    qsizetype m_skipped = 0; ///< requests that cannot be sent
    Pace m_pace;
};

} // namespace remote
