#include "dialogs/tmoip/ledwidget.h"

#include <QLabel>

using namespace Qt::StringLiterals;

ledwidget::ledwidget(QWidget *parent) : LedIndicator(u"ledwidget"_s, u":/led-circle-"_s, parent)
{
    resize(118, 118);
    label()->setMaximumSize(100, 100);
}
