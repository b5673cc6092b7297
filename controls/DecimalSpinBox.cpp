#include "controls/DecimalSpinBox.h"

#include <QFocusEvent>
#include <QLineEdit>

bool DecimalSpinBox::isHalfTyped() const { return lineEdit()->isModified(); }

QValidator::State DecimalSpinBox::validate(QString &input, int &position) const
{
    input.replace(u',', u'.');
    return QDoubleSpinBox::validate(input, position);
}

void DecimalSpinBox::focusOutEvent(QFocusEvent *event)
{
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::MenuBarFocusReason)
        QWidget::focusOutEvent(event);
    else
        QDoubleSpinBox::focusOutEvent(event);
}
