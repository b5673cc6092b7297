#pragma once

#include "controls/ValueSpin.h"

#include <QSpinBox>

/// A spin box for whole numbers. A half-typed text survives a change to another window.
class WholeSpinBox : public ValueSpin<QSpinBox>
{
    Q_OBJECT

public:
    using ValueSpin::ValueSpin;

protected:
    void focusOutEvent(QFocusEvent *event) override;
};
