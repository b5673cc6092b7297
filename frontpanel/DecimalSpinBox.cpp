#include "frontpanel/DecimalSpinBox.h"

#include <QLineEdit>

bool DecimalSpinBox::isHalfTyped() const { return hasFocus() && lineEdit()->isModified(); }

QValidator::State DecimalSpinBox::validate(QString &input, int &position) const
{
    input.replace(u',', u'.');
    return QDoubleSpinBox::validate(input, position);
}
