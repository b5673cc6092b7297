#pragma once

#include "remote/wire/FrameCutter.h"

#include <QObject>
#include <QSerialPort>
#include <QTimer>

namespace remote {

/// One serial link to the head, 921600 baud 8N1. It answers the head's query whether a client is present.
class ClientLink : public QObject
{
    Q_OBJECT

public:
    /// @param name of the link in listings and recordings: "remote" or "status"
    explicit ClientLink(const QByteArray &name);

    [[nodiscard]] QByteArray name() const { return m_name; }
    /// Opens a device, by path or by its name in /dev. Answers buffered for an earlier client are dropped.
    /// @return what is wrong; empty if it is open
    [[nodiscard]] QString open(const QString &path);
    /// Sends a frame, given without start and end byte.
    void send(const QByteArray &frame);
    /// Answers the head's presence query. A query that an earlier client left unanswered delays the first answers;
    /// without one the head ignores this.
    void reportPresence();

Q_SIGNALS:
    void received(const QByteArray &frame);
    void sent(const QByteArray &frame);
    /// The far end hung up and the port is closed. Emitted once.
    void lost();

private:
    void takeBytes();
    void checkLine();
    void giveUp();

    QByteArray m_name;
    QSerialPort m_port;
    FrameCutter m_cutter;
    QTimer m_lineTimer; ///< a pulled cable does not always cause a port error
};

} // namespace remote
