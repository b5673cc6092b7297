#include "frontpanel/ChannelPanel.h"

#include "channels/Channel.h"
#include "controls/StaleMark.h"

#include <QGroupBox>
#include <QLabel>
#include <QResizeEvent>
#include <QStyle>

#include <utility>

namespace {

// Pixels from which a panel is laid out large. A third of the window's width is too little, whatever the height.
constexpr int kRoomyHeight = 560;
constexpr int kRoomyWidth = 560;
constexpr qsizetype kLongestName = 200; // characters; more is cut before it is measured

} // namespace

ChannelPanel::ChannelPanel(const PanelContext &context, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_staleMark(new StaleMark(this))
{
    connect(&m_context.focusReturn, &FocusReturn::restoreDue, this, [this] {
        if (m_channel)
            restoreEntries();
    });
}

QString ChannelPanel::address() const { return m_channel ? m_channel->address() : QString(); }

void ChannelPanel::UpdateSetting(const QString &Cmd, const QString &Data)
{
    if (m_channel->isSetPending(Cmd))
        return; // a control that is stepped quickly must not fall back to an earlier step
    const ControlGuard::Scope showing(guard());
    const QWidget *const focused = window()->focusWidget();
    m_settings.show(Cmd, Data);
    if (window()->focusWidget() != focused) // its control is gone; the next one would get the keys meant for it
        focusReturn().giveBack();
}

void ChannelPanel::nameChildren(const QString &suffix, const QString &number)
{
    const auto children = findChildren<QWidget *>();
    for (QWidget *child : children) {
        const QString name = child->objectName();
        if (name.isEmpty() || name.startsWith(QLatin1StringView("qt_")))
            continue;
        child->setObjectName(name + (qobject_cast<QGroupBox *>(child) ? number : suffix));
    }
}

void ChannelPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    setRoomy(event->size().height() >= kRoomyHeight && event->size().width() >= kRoomyWidth);
    elideName();
    // Over the lamps in the head, which are stale too.
    constexpr int kMargin = 2;
    constexpr int kHeight = 25;
    const int left = width() * 2 / 5;
    m_staleMark->setGeometry(left, kMargin, width() - left - kMargin, kHeight);
}

void ChannelPanel::setStale(const QString &reason) { m_staleMark->setReason(reason); }

void ChannelPanel::setRoomy(bool roomy)
{
    if (std::exchange(m_roomy, roomy) == roomy)
        return;
    setProperty("roomy", roomy);
    const auto children = findChildren<QWidget *>();
    for (QWidget *child : children) { // rules of the style sheet depend on the panel
        style()->unpolish(child);
        style()->polish(child);
    }
}

void ChannelPanel::showName(QGroupBox *box, const QString &name, int besideName)
{
    m_besideName = besideName;
    m_nameBox = box;
    m_name = name.left(kLongestName);
    box->setToolTip(m_name);
    elideName();
}

void ChannelPanel::elideName()
{
    if (!m_nameBox)
        return;
    // A group box is at least as wide as its title, so a long one would push the window beyond the screen.
    const QString title = m_nameBox->fontMetrics().elidedText(m_name, Qt::ElideRight, width() - m_besideName);
    m_nameBox->setTitle(QString(title).replace(u'&', QLatin1StringView("&&"))); // a name holds no accelerator
}
