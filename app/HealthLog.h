#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

class StandardCommand;
class ZIRVOFSMainWindow;

/// Writes every five seconds, in the log category zirvo.health, what a run of weeks must not let grow: the window's
/// objects, timer events, and what waits on the links; and what it must not let end: the chassis' reports and the
/// readings that move on the panels. Off, and without any cost, unless QT_LOGGING_RULES turns it on.
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
