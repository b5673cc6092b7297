#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class QWidget;

/// Gives the keyboard focus back to a neutral place when the operator has left a control alone for 3 s, and discards
/// what stands half-typed in it.
class FocusReturn : public QObject
{
    Q_OBJECT

public:
    static constexpr int kDelayMs = 3000;

    enum class Repeat {
        Once,         ///< after one return there is none until the next touch
        UntilStopped, ///< every 3 s again, as long as nothing stops it
    };

    explicit FocusReturn(QObject *parent, Repeat repeat = Repeat::Once);

    /// The widget that holds the focus while no control does; not owned.
    void setHolder(QWidget *holder) { m_holder = holder; }

    /// Starts the 3 s afresh.
    void start();
    void stop();
    [[nodiscard]] bool isRunning() const { return m_timer.isActive(); }

    /// Moves the focus at once.
    void giveBack();

public Q_SLOTS:
    /// The 3 s are over.
    void tick();

Q_SIGNALS:
    /// Fields show their confirmed values again now. Comes before the focus moves, or its loss would commit the text
    /// half-typed.
    void restoreDue();

private:
    void timeOut();

    QTimer m_timer{ this };
    int m_touches = 0; ///< a time-out queued before the last one does not count
    QPointer<QWidget> m_holder;
};
