#include "remote/wire/ClientLink.h"

#include "remote/wire/Message.h"

#include <QFileInfo>

#include <poll.h>
#include <termios.h>

using namespace Qt::StringLiterals;

namespace remote {

namespace {
constexpr auto kPresenceKey = "U0:REMOTE";
}

ClientLink::ClientLink(const QByteArray &name) : m_name(name)
{
    connect(&m_port, &QSerialPort::readyRead, this, &ClientLink::takeBytes);
    connect(&m_port, &QSerialPort::errorOccurred, this, &ClientLink::checkLine);
    connect(&m_lineTimer, &QTimer::timeout, this, &ClientLink::checkLine);
}

QString ClientLink::open(const QString &path)
{
    m_port.setPortName(path.contains(u'/') ? QFileInfo(path).absoluteFilePath() : path);
    m_port.setBaudRate(921600);
    if (!m_port.open(QIODevice::ReadWrite))
        return u"%1 does not open: %2"_s.arg(path, m_port.errorString());
    ::tcflush(m_port.handle(), TCIFLUSH);
    m_lineTimer.start(500);
    return {};
}

void ClientLink::send(const QByteArray &frame)
{
    m_port.write(FrameCutter::framed(frame));
    Q_EMIT sent(frame);
}

void ClientLink::takeBytes()
{
    for (const QByteArray &frame : m_cutter.feed(m_port.readAll())) {
        Q_EMIT received(frame);
        const auto message = Message::parse(frame);
        if (message && message->kind == Message::Kind::Query && message->key() == kPresenceKey)
            reportPresence();
    }
}

void ClientLink::reportPresence() { send(Message::acknowledged(kPresenceKey, "1")); }

void ClientLink::checkLine()
{
    if (!m_port.isOpen() || !m_lineTimer.isActive())
        return;
    pollfd line{ m_port.handle(), 0, 0 };
    if (::poll(&line, 1, 0) < 1 || (line.revents & (POLLHUP | POLLERR | POLLNVAL)) == 0)
        return;
    m_lineTimer.stop();
    // The port may still be inside the read that failed.
    QMetaObject::invokeMethod(this, &ClientLink::giveUp, Qt::QueuedConnection);
}

void ClientLink::giveUp()
{
    m_port.close();
    Q_EMIT lost();
}

} // namespace remote
