#include "controls/OutsideClick.h"

#include <QApplication>
#include <QEvent>
#include <QMessageBox>

OutsideClick::OutsideClick(QWidget *window) : QObject(window), m_window(window)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool OutsideClick::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) {
        const QWidget *const window = static_cast<QWidget *>(watched)->window();
        if (window != m_window && window->windowType() != Qt::Popup && !qobject_cast<const QMessageBox *>(window))
            Q_EMIT pressed();
    }
    return QObject::eventFilter(watched, event);
}
