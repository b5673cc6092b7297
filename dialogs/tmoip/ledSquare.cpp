#include "dialogs/tmoip/ledSquare.h"

using namespace Qt::StringLiterals;

ledSquare::ledSquare(QWidget *parent) : LedIndicator(u"ledSquare"_s, u":/led_square_"_s, parent)
{
    setMaximumSize(90, 90);
    resize(90, 90);
}
