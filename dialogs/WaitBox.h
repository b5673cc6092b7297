#pragma once

#include <QObject>
#include <QTimer>

class QMessageBox;
class QWidget;

/// A modal box without buttons that is shown while the chassis is busy with something.
///
/// While it is open a nested event loop runs, in which further reports arrive. A chassis that never reports the end
/// must not lock the operator out: the box closes by itself after 60 s.
class WaitBox : public QObject
{
    Q_OBJECT

public:
    static constexpr int kLongestMs = 60'000;

    /// @param parent the window that waits
    WaitBox(const QString &text, QWidget *parent);

    /// Handles the chassis' report: "0" opens the box and returns when it has closed, "1" closes it. Any other report,
    /// and any repeat, does nothing.
    void update(const QString &report);

    [[nodiscard]] bool isShown() const { return m_shown; }

Q_SIGNALS:
    /// The box is about to open and will take the focus.
    void opening();
    /// The box has closed.
    void closed();

private:
    void open();
    void end();
    void run();

    QMessageBox *m_box; ///< child of the window
    QTimer m_limit{ this };
    bool m_shown = false;
    bool m_running = false; ///< an event loop of the box runs further down the stack
};
