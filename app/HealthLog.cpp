#include "app/HealthLog.h"

#include "frontpanel/ZIRVOFSMainWindow.h"
#include "link/SerialPortController.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLoggingCategory>

#include <utility>

namespace {

Q_LOGGING_CATEGORY(lcHealth, "zirvo.health", QtCriticalMsg)

constexpr int kIntervalMs = 10'000;

} // namespace

HealthLog::HealthLog(const ZIRVOFSMainWindow &window) : m_window(window)
{
    if (!lcHealth().isInfoEnabled())
        return;
    QCoreApplication::instance()->installEventFilter(this);
    connect(&m_timer, &QTimer::timeout, this, &HealthLog::write);
    m_timer.start(kIntervalMs);
}

bool HealthLog::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Timer)
        ++m_timerEvents;
    return QObject::eventFilter(watched, event);
}

void HealthLog::write()
{
    std::size_t waiting = 0;
    std::size_t toClient = 0;
    qint64 unwritten = 0;
    for (SerialPortController *link : m_window.SerialPortControllers()) {
        waiting += link->txmtCmdQueue().waitingCount();
        toClient += link->txmtRemoteCmdQueue().waitingCount();
        unwritten += link->port().bytesToWrite();
    }
    qCInfo(lcHealth).nospace() << "objects=" << m_window.findChildren<QObject *>().size()
                               << " timer-events=" << std::exchange(m_timerEvents, 0) << " waiting=" << waiting
                               << " to-client=" << toClient << " unwritten=" << unwritten;
}
