#pragma once

#include "link/FrameText.h"

#include <QMetaType>
#include <QString>

class CommandOwner;

/// One exchange with a card on a standard-protocol link: the request as written and the answer as parsed, or a
/// unsolicited message.
///
/// A plain value on the heap. Its sender creates it, the link owns it while it is queued or in flight, and the receive
/// dispatcher deletes it after its channel has processed it.
class StandardCommand
{
public:
    enum CommandStatus : qint32 {
        Created = 1,
        Queued = 2,
        Received = 3, ///< unsolicited, already split into address, mnemonic and data
        Sent = 4,     ///< in flight
        Completed = 5,
        Failed = 6, ///< rejected with NAK
        TimedOut = 7,
        Unparsed = 8, ///< a frame without address and mnemonic, or an acknowledgement that nobody waits for
    };

    enum CommandType : qint32 {
        Query = 1,  ///< answered by a reply of the same address and mnemonic
        Set = 2,    ///< answered by a single ACK or NAK byte
        Marker = 3, ///< never written; fills the in-flight slot until its time-out fires
    };

    enum class Priority {
        Normal,
        Background, ///< yields to all other commands, but never starves
    };

    static constexpr char16_t kAck = 0x06;
    static constexpr char16_t kNak = 0x15;
    static constexpr int kTimeOutMs = 1000;    ///< for every request that is written
    static constexpr int kMarkerTimeOutMs = 1; ///< for the end-of-settings marker

    StandardCommand() = default;

    /// A request, or, with the status Received, an unsolicited message.
    /// @param owner the channel that processes the answer; may be null
    /// @param data  the argument as wire text; empty for none
    /// @param timeOutMs how long to wait for the answer, in ms; 0 waits for ever
    StandardCommand(CommandOwner *owner, const QString &address, const QString &mnemonic, const QString &data,
                    CommandStatus status, CommandType type, int timeOutMs);

    /// A request for a value.
    /// @param data the argument as wire text; empty for none
    [[nodiscard]] static StandardCommand query(CommandOwner *owner, const QString &address, const QString &mnemonic,
                                               const QString &data = {});
    /// A request for a change.
    [[nodiscard]] static StandardCommand set(CommandOwner *owner, const QString &address, const QString &mnemonic,
                                             const QString &data);

    /// A received frame that could not be split.
    /// @param frame the content without STX and CR
    StandardCommand(CommandOwner *owner, const QString &frame, CommandStatus status, CommandType type);

    /// What a card has sent, split into address, mnemonic and data: Received, or Unparsed without a colon.
    /// @param frame the content without STX and CR
    [[nodiscard]] static StandardCommand fromCard(const QString &frame);

    /// Whether @p message, of fromCard(), is the reply to this query. A register's names the same register.
    [[nodiscard]] bool isAnsweredBy(const StandardCommand &message) const;

    /// The query that reads back what this set has written, or what this unsolicited message has reported.
    [[nodiscard]] StandardCommand readingBack() const;

    /// Takes the content of the answering frame, without STX and CR. A text with fewer than two colons that is
    /// neither ACK nor NAK changes nothing.
    void ResponseReceived(const QString &text);

    [[nodiscard]] CommandOwner *owner() const { return m_owner; }
    [[nodiscard]] const QString &commandText() const { return m_commandText; }
    [[nodiscard]] const QString &address() const { return m_address; }
    [[nodiscard]] const QString &mnemonic() const { return m_mnemonic; }
    [[nodiscard]] const QString &data() const { return m_data; }
    [[nodiscard]] const QString &responseText() const { return m_responseText; }
    [[nodiscard]] const QString &responseAddress() const { return m_responseAddress; }
    [[nodiscard]] const QString &responseMnemonic() const { return m_responseMnemonic; }
    [[nodiscard]] const QString &responseData() const { return m_responseData; }
    [[nodiscard]] CommandType type() const { return m_type; }
    [[nodiscard]] CommandStatus status() const { return m_status; }
    [[nodiscard]] int timeOutMs() const { return m_timeOutMs; }

    void setStatus(CommandStatus status) { m_status = status; }

    [[nodiscard]] Priority priority() const { return m_priority; }
    void setPriority(Priority priority) { m_priority = priority; }

    /// The request as it is written.
    [[nodiscard]] QByteArray commandBytes() const { return FrameText::encode(m_commandText, m_isLatin1); }
    /// Whether the data was not UTF-8 where it comes from; it is passed on in the same bytes then.
    [[nodiscard]] bool isLatin1() const { return m_isLatin1; }
    void setLatin1(bool latin1) { m_isLatin1 = latin1; }

private:
    CommandOwner *m_owner = nullptr;
    QString m_commandText;
    QString m_address;
    QString m_mnemonic;
    QString m_data;
    QString m_responseText;
    QString m_responseAddress;
    QString m_responseMnemonic;
    QString m_responseData;
    CommandType m_type = Query;
    CommandStatus m_status = Created;
    Priority m_priority = Priority::Normal;
    int m_timeOutMs = 0;
    bool m_isLatin1 = false;
};

Q_DECLARE_METATYPE(StandardCommand)
