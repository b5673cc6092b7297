#include "controls/WheelGuard.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QWidget>

void WheelGuard::protect(QWidget *root)
{
    auto *const guard = new WheelGuard(root);
    const auto controls = root->findChildren<QWidget *>();
    for (QWidget *control : controls) {
        const bool isWheeled = qobject_cast<QComboBox *>(control) || qobject_cast<QAbstractSpinBox *>(control) ||
                               qobject_cast<QAbstractSlider *>(control);
        if (!isWheeled)
            continue;
        control->setFocusPolicy(Qt::StrongFocus); // the wheel itself must not bring the focus
        control->installEventFilter(guard);
    }
}

bool WheelGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Wheel && !static_cast<QWidget *>(watched)->hasFocus()) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}
