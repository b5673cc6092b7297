#include "link/LinkGuard.h"

#include "link/LinkLog.h"

#include <QSerialPort>

#include <poll.h>

namespace {

constexpr int kCheckMs = 500;
constexpr int kReopenMs = 1000;

} // namespace

LinkGuard::LinkGuard(QSerialPort *port, QObject *parent) : QObject(parent), m_port(port)
{
    m_checkTmr.setInterval(kCheckMs);
    m_reopenTmr.setInterval(kReopenMs);
    m_errorTmr.setSingleShot(true);
    connect(&m_checkTmr, &QTimer::timeout, this, &LinkGuard::check);
    connect(&m_errorTmr, &QTimer::timeout, this, &LinkGuard::handleError);
    connect(&m_reopenTmr, &QTimer::timeout, this, &LinkGuard::reopen);
    connect(m_port, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError error) {
        if (error != QSerialPort::NoError && m_checkTmr.isActive() && !m_errorTmr.isActive())
            m_errorTmr.start(0);
    });
}

void LinkGuard::watch() { m_checkTmr.start(); }

void LinkGuard::handleError()
{
    check();
    if (!m_port->isOpen())
        return;
    ++m_strayErrors;
    qCInfo(lcLink) << "stray error" << m_strayErrors << "of" << m_port->portName() << m_port->errorString();
    Q_EMIT strayError();
}

void LinkGuard::check()
{
    if (!m_port->isOpen() || !hasHungUp())
        return;
    qCInfo(lcLink) << "lost" << m_port->portName();
    m_checkTmr.stop();
    m_port->close();
    m_reopenTmr.start();
    Q_EMIT lost();
}

bool LinkGuard::hasHungUp() const
{
    pollfd descriptor{ m_port->handle(), 0, 0 };
    return ::poll(&descriptor, 1, 0) > 0 && (descriptor.revents & (POLLHUP | POLLERR | POLLNVAL));
}

void LinkGuard::reopen()
{
    if (!isLost() || !m_port->open(QIODevice::ReadWrite))
        return;
    qCInfo(lcLink) << "found" << m_port->portName();
    m_reopenTmr.stop();
    m_checkTmr.start();
    Q_EMIT found();
}
