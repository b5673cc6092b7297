#include "app/HealthLog.h"

#include "frontpanel/ChannelPanel.h"
#include "frontpanel/ZIRVOFSMainWindow.h"
#include "head/SerialPortController.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QLoggingCategory>
#include <QProgressBar>

#include <malloc.h>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(lcHealth, "zirvo.health", QtCriticalMsg)

constexpr int kIntervalMs = 5000;

/// Bytes that are allocated and not freed. Unlike the resident size, they do not count what the C library keeps.
std::size_t heapInUse()
{
    const struct mallinfo2 heap = ::mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

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

void HealthLog::countReport(const StandardCommand *command)
{
    if (command->status() == StandardCommand::Received)
        ++m_reports;
}

qsizetype HealthLog::countMovedReadings()
{
    QStringList readings;
    for (const ChannelPanel *panel : m_window.findChildren<ChannelPanel *>()) {
        for (const QProgressBar *level : panel->findChildren<QProgressBar *>())
            readings += QString::number(level->value());
        for (const QLabel *label : panel->findChildren<QLabel *>())
            readings += label->text();
    }
    const QStringList before = std::exchange(m_readings, readings);
    qsizetype moved = 0;
    for (qsizetype i = 0; i < qMin(before.size(), readings.size()); ++i)
        moved += before[i] != readings[i];
    return moved;
}

void HealthLog::write()
{
    std::size_t waiting = 0;
    std::size_t toClient = 0;
    qint64 unwritten = 0;
    for (SerialPortController *link : m_window.SerialPortControllers()) {
        // Links are opened one after the other.
        connect(link, &SerialPortController::RcvdCmd, this, &HealthLog::countReport, Qt::UniqueConnection);
        (link->isClientLink() ? toClient : waiting) += link->waitingCount();
        unwritten += link->port().bytesToWrite();
    }
    qCInfo(lcHealth).nospace() << "objects=" << m_window.findChildren<QObject *>().size()
                               << " timer-events=" << std::exchange(m_timerEvents, 0) << " waiting=" << waiting
                               << " to-client=" << toClient << " unwritten=" << unwritten
                               << " reports=" << std::exchange(m_reports, 0) << " moved=" << countMovedReadings()
                               << " heap-kib=" << heapInUse() / 1024;
}
