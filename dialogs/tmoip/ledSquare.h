#pragma once

#include "dialogs/tmoip/LedIndicator.h"

/// A square lamp.
class ledSquare : public LedIndicator
{
    Q_OBJECT

public:
    explicit ledSquare(QWidget *parent = nullptr);
};
