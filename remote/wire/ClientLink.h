#pragma once

#include "remote/wire/FrameCutter.h"

#include <QObject>
#include <QSerialPort>
#include <QTimer>

namespace remote {

/// One serial link to the head, 921600 baud 8N1. It answers the head's question whether a client is there.
class ClientLink : public QObject
{
    Q_OBJECT

public:
    /// @param name what the link is called in listings and recordings: "remote" or "status"
    explicit ClientLink(const QByteArray &name);

    [[nodiscard]] QByteArray name() const { return m_name; }
    /// Opens a device, by path or by its name in /dev. Answers that waited for an earlier client are dropped.
    /// @return what is wrong; empty if it is open
    [[nodiscard]] QString open(const QString &path);
    /// Sends a frame, given without start and end byte.
    void send(const QByteArray &frame);
    /// Answers the head's question whether a client is there. One that is open when the client comes holds up its first
    /// answers; with none open this means nothing.
    void tellPresence();

Q_SIGNALS:
    void received(const QByteArray &frame);
    void sent(const QByteArray &frame);
    /// The far end is gone; the port is closed. Comes once.
    void lost();

private:
    void takeBytes();
    void checkLine();
    void giveUp();

    QByteArray m_name;
    QSerialPort m_port;
    FrameCutter m_cutter;
    QTimer m_lineTimer; ///< a pulled cable need not report an error
};

} // namespace remote
