#include "controls/StaleMark.h"

using namespace Qt::StringLiterals;

StaleMark::StaleMark(QWidget *parent) : QLabel(parent)
{
    setProperty("role", u"stale"_s);
    setAlignment(Qt::AlignCenter);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void StaleMark::setReason(const QString &reason)
{
    const QString mark = reason.isEmpty() ? QString() : u"STALE: "_s + reason;
    if (text() == mark)
        return;
    setText(mark);
    setVisible(!mark.isEmpty());
    raise();
    parentWidget()->setAccessibleDescription(mark);
}
