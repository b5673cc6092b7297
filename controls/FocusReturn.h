#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class QWidget;

/// Returns the keyboard focus to a neutral place 3 s after the operator last used a control, and discards a half-typed
/// text.
class FocusReturn : public QObject
{
    Q_OBJECT

public:
    static constexpr int kDelayMs = 3000;

    enum class Repeat {
        Once,         ///< not again before the next start
        UntilStopped, ///< again every 3 s
    };

    explicit FocusReturn(QObject *parent, Repeat repeat = Repeat::Once);

    /// The widget that holds the focus while no control does; not owned.
    void setHolder(QWidget *holder) { m_holder = holder; }

    /// Restarts the 3 s.
    void start();
    void stop();
    [[nodiscard]] bool isRunning() const { return m_timer.isActive(); }

    /// Moves the focus at once.
    void giveBack();

public Q_SLOTS:
    /// The 3 s have elapsed.
    void tick();

Q_SIGNALS:
    /// Fields must show their confirmed values now. Emitted before the focus moves, since losing the focus would
    /// commit a half-typed text.
    void restoreDue();

private:
    void timeOut();

    QTimer m_timer{ this };
    int m_touches = 0; ///< number of starts and stops; a time-out queued before the last one is ignored
    QPointer<QWidget> m_holder;
};
