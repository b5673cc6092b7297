#include "controls/DecimalSpinBox.h"

QValidator::State DecimalSpinBox::validate(QString &input, int &position) const
{
    input.replace(u',', u'.');
    return ValueSpin::validate(input, position);
}
