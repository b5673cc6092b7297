#include "controls/WholeSpinBox.h"

void WholeSpinBox::focusOutEvent(QFocusEvent *event)
{
    if (event->reason() == Qt::ActiveWindowFocusReason)
        update(); // the frame shows the focus; the base class would commit
    else
        ValueSpin::focusOutEvent(event);
}
