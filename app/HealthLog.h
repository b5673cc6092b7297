#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

class StandardCommand;
class ZIRVOFSMainWindow;

/// Logs every five seconds, in the category zirvo.health, what must not grow in a run of weeks: the window's objects,
/// timer events, and the queues of the links; and what must not stop: the chassis' reports and the readings that move
/// on the panels. Off, and without cost, unless QT_LOGGING_RULES turns it on.
class HealthLog : public QObject
{
    Q_OBJECT

public:
    /// @param window outlives this
    explicit HealthLog(const ZIRVOFSMainWindow &window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void write();
    void countReport(const StandardCommand *command);
    /// How many levels and texts on the panels differ from those of the last line.
    [[nodiscard]] qsizetype countMovedReadings();

    const ZIRVOFSMainWindow &m_window;
    QTimer m_timer;
    QStringList m_readings;
    // Of the whole application since the last line.
    int m_timerEvents = 0;
    int m_reports = 0;
};
