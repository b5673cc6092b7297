#include "controls/SwitchBox.h"

#include "controls/OnOff.h"
#include "controls/ValueText.h"

#include <QStyleOptionButton>
#include <QStylePainter>

void SwitchBox::showValue(const QString &value) { showValue(value, isOn(value), isOn(value) || isOff(value)); }

void SwitchBox::showValue(const QString &value, bool isOn, bool isValid)
{
    setChecked(isOn);
    setStandIn(isValid ? QString() : ValueText::shown(value));
}

void SwitchBox::setStandIn(const QString &text)
{
    if (m_standIn == text)
        return;
    m_standIn = text;
    setAccessibleDescription(text);
    update();
}

void SwitchBox::nextCheckState()
{
    setStandIn({}); // the operator's choice replaces it
    QCheckBox::nextCheckState();
}

void SwitchBox::paintEvent(QPaintEvent *event)
{
    QCheckBox::paintEvent(event);
    if (m_standIn.isEmpty())
        return;
    QStyleOptionButton option;
    initStyleOption(&option);
    const QRect box = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
    QStylePainter painter(this);
    painter.drawItemText(box, Qt::AlignCenter, palette(), isEnabled(),
                         fontMetrics().elidedText(m_standIn, Qt::ElideRight, box.width()), foregroundRole());
}
