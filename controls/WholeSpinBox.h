#pragma once

#include "controls/ValueSpin.h"

#include <QSpinBox>

/// A spin box for whole numbers. Half an entry stays as it is while another window has the keyboard.
class WholeSpinBox : public ValueSpin<QSpinBox>
{
    Q_OBJECT

public:
    using ValueSpin::ValueSpin;

protected:
    void focusOutEvent(QFocusEvent *event) override;
};
