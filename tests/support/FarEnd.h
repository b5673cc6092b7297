#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QObject>
#include <QString>

#include <functional>

class QSocketNotifier;

/// The chassis' end of one serial link: the master of a pseudo-terminal whose slave a real QSerialPort opens.
///
/// It keeps what arrives and, once answering, plays a chassis that a test scripts: a query gets the value set for it,
/// a set is acknowledged, and single mnemonics can be refused or left unanswered.
class FarEnd : public QObject
{
    Q_OBJECT

public:
    /// @param devicePath where the slave appears; a symbolic link is made there
    explicit FarEnd(const QString &devicePath);
    ~FarEnd() override;

    /// Everything received, byte for byte.
    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }
    /// Content of every frame received (between STX and CR), oldest first.
    [[nodiscard]] const QByteArrayList &frames() const { return m_frames; }
    /// Frames received from @p mark on; a mark is frames().size() at some moment.
    [[nodiscard]] QByteArrayList framesSince(qsizetype mark) const { return m_frames.sliced(mark); }
    /// Called with each frame as it arrives, for an end that a test plays itself.
    void setHandler(std::function<void(const QByteArray &)> handler) { m_handler = std::move(handler); }
    void clear();

    /// Pulls the cable: the port at the other end hangs up, and its device is gone.
    void unplug();
    /// Puts the device back.
    void plug();

    /// Takes what arrives, as from the start, or leaves it in the terminal.
    void setReading(bool reading);
    /// From now on not even the terminal takes anything.
    void jam();

    /// Waits until at least @p count frames have arrived.
    [[nodiscard]] bool waitForFrames(qsizetype count, int timeOutMs = 5000);
    /// Waits until @p frame has arrived; frames already there count.
    [[nodiscard]] bool waitForFrame(const QByteArray &frame, int timeOutMs = 5000);

    void send(const QByteArray &rawBytes);
    /// Sends STX, @p content, CR.
    void sendFrame(const QByteArray &content) { send('\x02' + content + '\x0D'); }
    void ack() { sendFrame("\x06"); }
    void nak() { sendFrame("\x15"); }

    // The scripted chassis

    /// Answers by itself from now on, or no longer.
    void setAnswering(bool answering) { m_answering = answering; }
    /// Value that a query gets, by "ADDRESS:MNEMONIC" or "ADDRESS:RDRG:REGISTER"; a query without one gets no answer. A
    /// set that is acknowledged changes it, "CDRG" the register's.
    void setValue(const QByteArray &key, const QByteArray &value) { m_values[key] = value; }
    [[nodiscard]] QByteArray value(const QByteArray &key) const { return m_values.value(key); }
    /// Sets of this "ADDRESS:MNEMONIC" are answered with NAK.
    void refuse(const QByteArray &key) { m_reactions[key] = Reaction::Refuse; }
    /// Requests of this "ADDRESS:MNEMONIC" get no answer.
    void ignore(const QByteArray &key) { m_reactions[key] = Reaction::Ignore; }
    void behave(const QByteArray &key) { m_reactions.remove(key); }

private:
    enum class Reaction { Answer, Refuse, Ignore };

    void receive();
    void answer(const QByteArray &frame);

    int m_master = -1;
    int m_slave = -1; ///< kept open, or the master would report a hang-up while no port has it open
    QSocketNotifier *m_notifier = nullptr;
    QString m_devicePath;
    QByteArray m_bytes;
    QByteArray m_partial;
    QByteArrayList m_frames;
    std::function<void(const QByteArray &)> m_handler;
    bool m_answering = false;
    QHash<QByteArray, QByteArray> m_values;
    QHash<QByteArray, Reaction> m_reactions;
};
