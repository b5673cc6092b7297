#include "controls/WholeSpinBox.h"

void WholeSpinBox::focusOutEvent(QFocusEvent *event)
{
    if (event->reason() == Qt::ActiveWindowFocusReason)
        QWidget::focusOutEvent(event);
    else
        ValueSpin::focusOutEvent(event);
}
