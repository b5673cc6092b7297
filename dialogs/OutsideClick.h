#pragma once

#include <QObject>

class QWidget;

/// Tells when the operator presses on another window of the program, which ends an entry as a press within its own
/// window does. A box that opens by itself takes the keyboard too, but is no press; nor is what answers it, or what
/// chooses from a menu or a list.
class OutsideClick : public QObject
{
    Q_OBJECT

public:
    /// @param window owns it
    explicit OutsideClick(QWidget *window);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void pressed();

private:
    QWidget *m_window;
};
