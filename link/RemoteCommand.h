#pragma once

#include "link/FrameText.h"

#include <QLatin1StringView>
#include <QMetaType>
#include <QString>

#include <concepts>

class CommandOwner;

/// One message of the protocol that the remote client speaks.
///
/// A plain value on the heap, like StandardCommand; its link owns it until it has ended.
///
/// The constructors differ only in text, int and bool, which C++ converts into each other silently. They take exactly
/// the types that they name, so a message built from the wrong list of arguments does not compile.
class RemoteCommand
{
public:
    /// The values are those of StandardCommand::CommandStatus.
    enum CommandStatus : qint32 {
        Created = 1,
        Queued = 2,
        Received = 3,
        Sent = 4,
        Completed = 5, ///< answered with ACK
        Failed = 6,    ///< answered with NAK
        TimedOut = 7,
        Unparsed = 8,
    };

    enum CommandType : qint32 {
        Query = 1,     ///< of the head or of the client
        Value = 2,     ///< a set of the client, or a value that the head pushes
        Answer = 4,    ///< the head's answer to a query or set of the client
        Forwarded = 5, ///< a value passed on from the chassis
    };

    static constexpr int kPushTimeOutMs = 1;     ///< how long the next message waits behind one that is not answered
    static constexpr int kQueryTimeOutMs = 1200; ///< how long the client has to answer

    static constexpr QChar kAck{ 0x06 };
    static constexpr QChar kNak{ 0x15 };

    RemoteCommand() = default;

    // In all of them: owner is the channel that sends or will process the message, and may be null; timeOutMs is how
    // long the next message waits behind this one; queue makes the message start as Queued.

    /// A value that the head pushes.
    RemoteCommand(CommandOwner *owner, const QString &address, const QString &mnemonic, const QString &data,
                  std::same_as<bool> auto queue)
        : RemoteCommand(owner, address, mnemonic, data, kPushTimeOutMs, Value, queue)
    {
    }
    RemoteCommand(CommandOwner *owner, const QString &address, const QString &mnemonic, const QString &data,
                  std::same_as<int> auto timeOutMs, std::same_as<bool> auto queue)
        : RemoteCommand(owner, address, mnemonic, data, timeOutMs, Value, queue)
    {
    }
    /// A message of any type but an answer.
    RemoteCommand(CommandOwner *owner, const QString &address, const QString &mnemonic, const QString &data,
                  std::same_as<int> auto timeOutMs, std::same_as<CommandType> auto type, std::same_as<bool> auto queue)
        : RemoteCommand(owner, address, mnemonic, data, timeOutMs, type, queue, QString())
    {
    }
    /// An answer to the client; @p ack is whether its query or set is supported.
    RemoteCommand(CommandOwner *owner, const QString &address, const QString &mnemonic, const QString &data,
                  std::same_as<bool> auto ack, std::same_as<bool> auto queue)
        : RemoteCommand(owner, address, mnemonic, data, kPushTimeOutMs, ack, queue)
    {
    }
    RemoteCommand(CommandOwner *owner, const QString &address, const QString &mnemonic, const QString &data,
                  std::same_as<int> auto timeOutMs, std::same_as<bool> auto ack, std::same_as<bool> auto queue)
        : RemoteCommand(owner, address, mnemonic, data, timeOutMs, Answer, queue, QString(ack ? kAck : kNak))
    {
    }
    /// A query of the head.
    RemoteCommand(CommandOwner *owner, const QString &address, const QString &mnemonic, std::same_as<bool> auto queue)
        : RemoteCommand(owner, address, mnemonic, kQueryTimeOutMs, queue)
    {
    }
    RemoteCommand(CommandOwner *owner, const QString &address, const QString &mnemonic,
                  std::same_as<int> auto timeOutMs, std::same_as<bool> auto queue)
        : RemoteCommand(owner, address, mnemonic, QString(), timeOutMs, Query, queue, QString())
    {
    }

    /// What the client sent, from the content of its frame: a query, a value or an answer to a message of the head.
    /// Anything else is Unparsed. Control characters are left out of a query or value, which then is garbled; with them
    /// an answer is Unparsed.
    [[nodiscard]] static RemoteCommand fromClient(const QString &frame);

    [[nodiscard]] CommandOwner *owner() const { return m_owner; }
    [[nodiscard]] const QString &address() const { return m_address; }
    [[nodiscard]] const QString &mnemonic() const { return m_mnemonic; }
    [[nodiscard]] const QString &data() const { return m_data; }
    /// The complete message as written.
    [[nodiscard]] const QString &commandText() const { return m_text; }
    /// Data of the client's answer; empty until it has answered, and after a time-out.
    [[nodiscard]] const QString &responseData() const { return m_responseData; }
    [[nodiscard]] const QString &responseText() const { return m_responseText; }
    [[nodiscard]] CommandType type() const { return m_type; }
    [[nodiscard]] CommandStatus status() const { return m_status; }
    [[nodiscard]] int timeOutMs() const { return m_timeOutMs; }

    /// Whether it held control characters; it is refused then.
    [[nodiscard]] bool isGarbled() const { return m_isGarbled; }
    [[nodiscard]] bool isAnswer() const { return m_type == Answer; }
    /// Whether @p other is about the same value of the same channel.
    [[nodiscard]] bool isAboutSameAs(const RemoteCommand &other) const
    {
        return m_address == other.m_address && m_mnemonic == other.m_mnemonic;
    }

    void setStatus(CommandStatus status) { m_status = status; }

    /// The message as it is written.
    [[nodiscard]] QByteArray commandBytes() const { return FrameText::encode(m_text, m_isLatin1); }
    /// Whether the data was not UTF-8 where it comes from; it is passed on in the same bytes then.
    [[nodiscard]] bool isLatin1() const { return m_isLatin1; }
    void setLatin1(bool latin1) { m_isLatin1 = latin1; }
    /// Takes the client's answer to this message, and its status.
    void answeredBy(const RemoteCommand &answer);
    /// The client did not answer in time.
    void setTimedOut();

    /// Whether a newer message of the same address and mnemonic makes this one obsolete: true for values in force and
    /// for queries, not for answers and not for values of a series.
    [[nodiscard]] bool isReplaceable() const { return m_isReplaceable && m_type != Answer; }
    void setReplaceable(bool replaceable) { m_isReplaceable = replaceable; }

private:
    RemoteCommand(CommandOwner *owner, const QString &address, const QString &mnemonic, const QString &data,
                  int timeOutMs, CommandType type, bool queue, const QString &acknowledgement);

    CommandOwner *m_owner = nullptr;
    QString m_address;
    QString m_mnemonic;
    QString m_data;
    QString m_text;
    QString m_responseData;
    QString m_responseText;
    CommandType m_type = Value;
    CommandStatus m_status = Created;
    int m_timeOutMs = 0;
    bool m_isReplaceable = true;
    bool m_isLatin1 = false;
    bool m_isGarbled = false;
};

Q_DECLARE_METATYPE(RemoteCommand)
