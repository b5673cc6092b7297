#pragma once

#include <QObject>

class QWidget;

/// Reports a press on another window of the program, which ends an entry like a press within its own window. A box that
/// opens by itself is no press; neither is the answer to it, nor a choice from a menu or a list.
class OutsideClick : public QObject
{
    Q_OBJECT

public:
    /// @param window owns this object
    explicit OutsideClick(QWidget *window);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void pressed();

private:
    QWidget *m_window;
};
