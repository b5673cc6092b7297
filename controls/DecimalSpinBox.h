#pragma once

#include "controls/ValueSpin.h"

#include <QDoubleSpinBox>

/// A spin box that takes a comma for the decimal point it is: to leave it out, as for a digit separator, would turn
/// "2265,5" into another number without a word.
class DecimalSpinBox : public ValueSpin<QDoubleSpinBox>
{
    Q_OBJECT

public:
    using ValueSpin::ValueSpin;

protected:
    QValidator::State validate(QString &input, int &position) const override;
};
