#pragma once

#include <QMetaType>
#include <QString>

class Channel;

/// One message of the protocol that the remote client speaks.
///
/// Like StandardCommand a plain value on the heap, owned by its link until it is finished.
class RemoteCommand
{
public:
    /// The values are those of StandardCommand::CommandStatus.
    enum CommandStatus : qint32 {
        Created = 1,
        Queued = 2,
        Received = 3,
        Sent = 4,
        Completed = 5,
        Failed = 6,
        TimedOut = 7,
        Unparsed = 8,
    };

    enum CommandType : qint32 {
        Query = 1,
        Value = 2,     ///< a set of the client, or a value that the head pushes
        Answer = 4,    ///< the head's answer to a query or set of the client
        Forwarded = 5, ///< a value passed on from the chassis
    };

    static constexpr int kPushTimeOutMs = 1; ///< how long the next message waits behind one that nobody answers

    RemoteCommand() = default;

    /// A message of address, mnemonic and data.
    /// @param owner the channel that sends it; may be null
    /// @param timeOutMs how long the next message waits behind this one, in ms
    /// @param queue whether the message starts as Queued
    RemoteCommand(Channel *owner, const QString &address, const QString &mnemonic, const QString &data, int timeOutMs,
                  CommandType type, bool queue);

    [[nodiscard]] Channel *owner() const { return m_owner; }
    [[nodiscard]] const QString &commandText() const { return m_text; }
    [[nodiscard]] CommandType type() const { return m_type; }
    [[nodiscard]] CommandStatus status() const { return m_status; }
    [[nodiscard]] int timeOutMs() const { return m_timeOutMs; }

    void setStatus(CommandStatus status) { m_status = status; }

private:
    Channel *m_owner = nullptr;
    QString m_text;
    CommandType m_type = Value;
    CommandStatus m_status = Created;
    int m_timeOutMs = 0;
};

Q_DECLARE_METATYPE(RemoteCommand)
