#pragma once

#include "controls/ValueSpin.h"

#include <QDoubleSpinBox>

/// A spin box that accepts a comma as the decimal point. Taken for a digit separator, it would silently turn "2265,5"
/// into another number.
class DecimalSpinBox : public ValueSpin<QDoubleSpinBox>
{
    Q_OBJECT

public:
    using ValueSpin::ValueSpin;

protected:
    QValidator::State validate(QString &input, int &position) const override;
};
