#include "controls/FocusReturn.h"

#include <QWidget>

FocusReturn::FocusReturn(QObject *parent, Repeat repeat) : QObject(parent)
{
    m_timer.setSingleShot(repeat == Repeat::Once);
    m_timer.setInterval(kDelayMs);
    connect(&m_timer, &QTimer::timeout, this, &FocusReturn::timeOut);
}

void FocusReturn::giveBack()
{
    if (m_holder)
        m_holder->setFocus(Qt::OtherFocusReason);
}

void FocusReturn::start()
{
    ++m_touches;
    m_timer.start();
}

void FocusReturn::stop()
{
    ++m_touches;
    m_timer.stop();
}

void FocusReturn::timeOut()
{
    // From the event loop, after the operator's input that is already queued.
    const auto tickUnlessTouched = [this, touches = m_touches] {
        if (touches == m_touches)
            tick();
    };
    QMetaObject::invokeMethod(this, tickUnlessTouched, Qt::QueuedConnection);
}

void FocusReturn::tick()
{
    Q_EMIT restoreDue();
    giveBack();
}
