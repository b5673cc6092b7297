#include "dialogs/tmoip/LedIndicator.h"

#include <QGridLayout>
#include <QLabel>
#include <QPixmap>

using namespace Qt::StringLiterals;

LedIndicator::LedIndicator(const QString &name, const QString &images, QWidget *parent)
    : QWidget(parent)
    , m_images(images)
    , m_label(new QLabel(this))
{
    setObjectName(name); // a form sets another one afterwards
    setWindowTitle(u"Form"_s);
    m_label->setObjectName(u"LED"_s);
    m_label->setScaledContents(true);
    m_label->setMinimumSize(1, 1); // else no smaller than the image
    auto *const layout = new QGridLayout(this);
    layout->setObjectName(u"gridLayout"_s);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_label, 0, 0);
    setColor(u"Black"_s);
}

void LedIndicator::setColor(const QString &name)
{
    const bool isKnown = QStringList{ u"Red"_s, u"Green"_s, u"Yellow"_s }.contains(name);
    const QString color = isKnown ? name : u"Black"_s;
    if (color == m_color)
        return;
    m_color = color;
    m_label->setPixmap(QPixmap(m_images + color.toLower() + u".png"_s));
    setAccessibleDescription(color);
}
