#include "controls/FocusReturn.h"

#include <QWidget>

FocusReturn::FocusReturn(QObject *parent, Repeat repeat) : QObject(parent)
{
    m_timer.setSingleShot(repeat == Repeat::Once);
    m_timer.setInterval(kDelayMs);
    connect(&m_timer, &QTimer::timeout, this, &FocusReturn::timeOut, Qt::QueuedConnection);
}

void FocusReturn::giveBack()
{
    if (m_holder)
        m_holder->setFocus(Qt::OtherFocusReason);
}

void FocusReturn::timeOut()
{
    if (!m_timer.isSingleShot() || !m_timer.isActive()) // else started again meanwhile, for a newer touch
        tick();
}

void FocusReturn::tick()
{
    Q_EMIT restoreDue();
    giveBack();
}
