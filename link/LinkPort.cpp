#include "link/LinkPort.h"

#include "link/LinkLog.h"
#include "link/SerialDevices.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <sys/ioctl.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kFullPort = 16 * 1024; ///< bytes

} // namespace

LinkPort::LinkPort(LinkKind::PORT_TYPE type) : m_guard(&m_port, this)
{
    m_timeOutTmr.setSingleShot(true);
    const bool legacyBoard = QCoreApplication::arguments().contains(u"-legacyboard"_s);
    m_port.setPortName(SerialDevices::path(type, legacyBoard));
    m_port.setFlowControl(QSerialPort::NoFlowControl);
    m_port.setParity(QSerialPort::NoParity);
    m_port.setDataBits(QSerialPort::Data8);
    m_port.setStopBits(QSerialPort::OneStop);
    m_port.setBaudRate(921600);
    connect(&m_guard, &LinkGuard::lost, this, &LinkPort::lost);
    connect(&m_guard, &LinkGuard::found, this, &LinkPort::noteFound);
    connect(&m_guard, &LinkGuard::strayError, this, &LinkPort::strayError);
}

void LinkPort::open()
{
    if (!m_port.open(QIODevice::ReadWrite)) {
        qCInfo(lcLink) << "cannot open" << m_port.portName() << m_port.errorString();
        m_guard.await();
        return;
    }
    qCInfo(lcLink) << "opened" << m_port.portName();
    m_guard.watch();
    m_hasOpened = true;
    Q_EMIT opened();
}

void LinkPort::noteFound()
{
    if (!std::exchange(m_hasOpened, true))
        Q_EMIT opened();
    Q_EMIT found();
}

bool LinkPort::isFull() const { return m_port.bytesToWrite() > kFullPort; }

void LinkPort::write(int timeOutMs, const QByteArray &bytes)
{
    startTimeOut(timeOutMs);
    if (!m_port.isOpen())
        return;
    qCDebug(lcTraffic) << m_port.portName() << ">" << bytes;
    m_port.write(bytes);
}

void LinkPort::drain(int timeOutMs)
{
    const QDeadlineTimer deadline(timeOutMs);
    while (m_port.bytesToWrite() > 0 && !deadline.hasExpired()) {
        if (!m_port.waitForBytesWritten(static_cast<int>(deadline.remainingTime())))
            return;
    }
    // Closing resets the line speed at once, so the kernel's buffer has to be empty by then.
    int held = 0;
    while (::ioctl(m_port.handle(), TIOCOUTQ, &held) == 0 && held > 0 && !deadline.hasExpired())
        QThread::msleep(1);
}

void LinkPort::startTimeOut(int ms)
{
    if (ms != 0)
        m_timeOutTmr.start(ms);
}
