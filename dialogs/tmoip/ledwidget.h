#pragma once

#include "dialogs/tmoip/LedIndicator.h"

/// A round lamp.
class ledwidget : public LedIndicator
{
    Q_OBJECT

public:
    explicit ledwidget(QWidget *parent = nullptr);
};
