#include "controls/ChoiceBox.h"

#include "controls/NumberText.h"
#include "controls/ValueText.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QSignalBlocker>
#include <QStylePainter>

ChoiceBox::ChoiceBox(QWidget *parent) : QComboBox(parent)
{
    connect(this, &QComboBox::currentIndexChanged, this, [this] { setStandIn({}); });
    connect(this, &QComboBox::activated, this, [this](int index) {
        if (!m_standIn.isEmpty()) // the item selected is not the value in force
            Q_EMIT currentIndexChanged(index);
    });
}

void ChoiceBox::showPosition(const QString &value) { showItem(NumberText::parseWhole(value).value_or(-1), value); }

void ChoiceBox::showItem(qint64 position, const QString &value)
{
    const QSignalBlocker showing(this);
    const bool isItem = position >= 0 && position < count();
    setCurrentIndex(isItem ? int(position) : -1);
    setStandIn(isItem ? QString() : value);
}

void ChoiceBox::showInstead(const QString &value) { setStandIn(value); }

void ChoiceBox::setStandIn(const QString &value)
{
    const QString text = ValueText::isKnown(value) ? ValueText::shown(value) : QString();
    if (m_standIn == text)
        return;
    m_standIn = text;
    setAccessibleDescription(text);
    update();
}

QString ChoiceBox::shownText() const { return m_standIn.isEmpty() ? currentText() : m_standIn; }

void ChoiceBox::refill(const QStringList &items)
{
    if (view()->isVisible())
        m_waiting = items;
    else
        exchange(items);
}

void ChoiceBox::exchange(const QStringList &items)
{
    m_waiting.reset();
    {
        const QSignalBlocker filling(this);
        const int position = currentIndex();
        clear();
        addItems(items);
        setCurrentIndex(position < count() ? position : -1);
    }
    Q_EMIT refilled();
}

void ChoiceBox::showPopup()
{
    QComboBox::showPopup();
    view()->window()->installEventFilter(this);
}

/// A window that opens closes the list without hidePopup(), and nothing is chosen.
bool ChoiceBox::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Hide && m_waiting) {
        const auto take = [this] {
            if (m_waiting && !view()->isVisible())
                exchange(*m_waiting);
        };
        QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
    }
    return QComboBox::eventFilter(watched, event);
}

void ChoiceBox::hidePopup()
{
    if (m_waiting) {
        const QString chosen = view()->currentIndex().data().toString();
        exchange(*m_waiting);
        const int place = findText(chosen, Qt::MatchExactly | Qt::MatchCaseSensitive);
        view()->setCurrentIndex(model()->index(place >= 0 ? place : currentIndex(), 0)); // hidePopup() reads it
    }
    QComboBox::hidePopup();
}

void ChoiceBox::paintEvent(QPaintEvent *event)
{
    if (m_standIn.isEmpty()) {
        QComboBox::paintEvent(event);
        return;
    }
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText = m_standIn;
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}
