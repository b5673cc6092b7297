#include "frontpanel/ChannelPanel.h"

#include "channels/Channel.h"

#include <QGroupBox>
#include <QResizeEvent>
#include <QStyle>

#include <utility>

namespace {

constexpr int kRoomyHeight = 560; // pixels

} // namespace

ChannelPanel::ChannelPanel(const PanelContext &context, QWidget *parent) : QWidget(parent), m_context(context)
{
    connect(&m_context.focusReturn, &FocusReturn::restoreDue, this, [this] {
        if (m_channel)
            restoreEntries();
    });
}

QString ChannelPanel::address() const { return m_channel ? m_channel->address() : QString(); }

void ChannelPanel::UpdateSetting(const QString &Cmd, const QString &Data)
{
    const ControlGuard::Scope showing(guard());
    showSetting(Cmd, Data);
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
    setRoomy(event->size().height() >= kRoomyHeight);
}

void ChannelPanel::setRoomy(bool roomy)
{
    if (std::exchange(m_roomy, roomy) == roomy)
        return;
    setProperty("roomy", roomy);
    const auto children = findChildren<QWidget *>();
    for (QWidget *child : children) { // the style sheet's rules about the panel apply to what is in it
        style()->unpolish(child);
        style()->polish(child);
    }
}
