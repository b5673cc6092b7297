#pragma once

#include <QObject>
#include <QTimer>

class ZIRVOFSMainWindow;

/// Writes every ten seconds what a run of weeks must not let grow, in the log category zirvo.health: the window's
/// objects, timer events, and what waits on the links. Off, and without any cost, unless QT_LOGGING_RULES turns it on.
class HealthLog : public QObject
{
    Q_OBJECT

public:
    /// @param window outlives this
    explicit HealthLog(const ZIRVOFSMainWindow &window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void write();

    const ZIRVOFSMainWindow &m_window;
    QTimer m_timer;
    int m_timerEvents = 0; ///< of the whole application since the last line
};
