#include "controls/ValueSlider.h"

#include "controls/ValueText.h"

#include <QSignalBlocker>

ValueSlider::ValueSlider(QWidget *parent) : QSlider(parent)
{
    connect(this, &QSlider::valueChanged, this, [this] { m_standIn.clear(); });
    // A key or a press that leads to the present position
    connect(this, &QSlider::actionTriggered, this, [this](int action) {
        if (action != SliderMove && sliderPosition() == value())
            chooseStandIn();
    });
    connect(this, &QSlider::sliderReleased, this, &ValueSlider::chooseStandIn);
}

void ValueSlider::showValue(const QString &value)
{
    const QSignalBlocker showing(this);
    bool isWhole = false;
    const int position = value.toInt(&isWhole); // 0, the start of each slider, for any other text
    setValue(position);
    m_standIn = isWhole && position == this->value() ? QString() : ValueText::shown(value);
}

QString ValueSlider::shownText() const { return m_standIn.isEmpty() ? QString::number(value()) : m_standIn; }

void ValueSlider::chooseStandIn()
{
    if (!m_standIn.isEmpty())
        Q_EMIT valueChanged(value());
}
