#pragma once

#include "dialogs/LedIndicator.h"

/// A round lamp.
class ledwidget : public LedIndicator
{
    Q_OBJECT

public:
    explicit ledwidget(QWidget *parent = nullptr);
};
