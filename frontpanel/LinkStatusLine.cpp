#include "frontpanel/LinkStatusLine.h"

#include "channels/UniversalChan.h"
#include "controls/WidgetUpdate.h"
#include "head/SerialPortController.h"

#include <QLabel>
#include <QProgressBar>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace {

constexpr int kRefreshMs = 500;
constexpr int kFailureMs = 10'000;
constexpr int kFailureWidth = 260; ///< pixels; there is room for it beside five links
constexpr qint64 kMsPerSecond = 1000;

QString nameOf(SerialPortController::PORT_TYPE type)
{
    switch (type) {
    case SerialPortController::COMMAND_LINK:
        return u"Chassis"_s;
    case SerialPortController::EYE_CONST_LINK:
        return u"Eye link"_s;
    case SerialPortController::REMOTE_LINK:
        return u"Remote"_s;
    case SerialPortController::REMOTE_EYE_AND_STATUS_LINK:
        return u"Remote status"_s;
    case SerialPortController::SPECTRAL_LINK:
        return u"Spectrum"_s;
    }
    Q_UNREACHABLE();
}

/// Colours a word about a fault.
void markTrouble(QLabel *label, bool trouble)
{
    if (label->property("trouble").toBool() == trouble)
        return;
    label->setProperty("trouble", trouble);
    label->style()->unpolish(label);
    label->style()->polish(label);
}

/// Why the chassis' values may be stale; empty if they are not.
QString troubleOf(const LinkStatus &status)
{
    switch (status.state) {
    case LinkStatus::State::NotPresent:
    case LinkStatus::State::Lost:
        return u"no link"_s;
    case LinkStatus::State::Opening:
    case LinkStatus::State::Waiting:
        return u"no answer"_s;
    case LinkStatus::State::Reading:
        return u"re-reading settings"_s;
    case LinkStatus::State::Live:
        break;
    }
    return status.isSilent() ? u"chassis silent"_s : QString();
}

/// Whether this request comes from the head itself, not from operator or client.
bool isOwnRequest(const QString &mnemonic)
{
    using Commands = UniversalChan::Commands;
    return mnemonic == Commands::TRON || mnemonic == Commands::SYSID || mnemonic == Commands::REMOTE;
}

QString counted(quint64 count, const QString &one, const QString &many)
{
    return QString::number(count) + u' ' + (count == 1 ? one : many);
}

} // namespace

LinkStatusLine::LinkStatusLine(QWidget *parent)
    : QStatusBar(parent)
    , m_progress(new QProgressBar(this))
    , m_failure(new QLabel(this))
    , m_messages(new QLabel(this))
{
    setSizeGripEnabled(false);
    setAccessibleName(u"State of the links"_s);
    m_progress->setAccessibleName(u"Settings read"_s);
    m_progress->setFormat(u"%v of %m"_s);
    m_progress->hide();
    addWidget(m_progress);
    m_failure->setTextFormat(Qt::PlainText); // it shows mnemonics that come from a client
    m_failure->hide();
    addWidget(m_failure);
    // Takes the remaining width, and never makes the window wider than the screen.
    m_messages->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_messages->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    addWidget(m_messages, 1);
    m_failureTmr.setSingleShot(true);
    connect(&m_failureTmr, &QTimer::timeout, m_failure, &QWidget::hide);
    connect(&m_refreshTmr, &QTimer::timeout, this, &LinkStatusLine::refresh);
    m_refreshTmr.start(kRefreshMs);
}

void LinkStatusLine::addLink(const SerialPortController *link)
{
    auto *const label = new QLabel(this);
    insertWidget(static_cast<int>(m_entries.size()), label);
    m_entries.append({ link, label });
    if (m_entries.size() == 1)
        connect(link, &SerialPortController::RequestFailed, this, &LinkStatusLine::showFailure);
    refresh();
}

void LinkStatusLine::refresh()
{
    for (const Entry &entry : std::as_const(m_entries)) {
        const LinkStatus::State state = entry.link->status().state;
        WidgetUpdate::text(entry.label, nameOf(entry.link->portType()) + u": "_s + stateOf(*entry.link));
        markTrouble(entry.label, state == LinkStatus::State::Lost || state == LinkStatus::State::NotPresent ||
                                     entry.link->status().hasOtherCards);
    }
    if (!m_entries.isEmpty())
        showChassis(*m_entries.front().link);
    Q_EMIT refreshed();
}

QString LinkStatusLine::stateOf(const SerialPortController &link) const
{
    const LinkStatus status = link.status();
    switch (status.state) {
    case LinkStatus::State::NotPresent:
        return u"not present"_s;
    case LinkStatus::State::Opening:
        return u"opening"_s;
    case LinkStatus::State::Waiting:
        return link.portType() == SerialPortController::COMMAND_LINK ? u"waiting for the chassis"_s : u"waiting"_s;
    case LinkStatus::State::Reading:
        return u"reading settings"_s;
    case LinkStatus::State::Lost:
        return u"lost since "_s + status.lostSince.toString(u"hh:mm:ss"_s);
    case LinkStatus::State::Live:
        break;
    }
    if (link.portType() == SerialPortController::REMOTE_LINK)
        return m_isClientPresent ? u"client present"_s : u"no client"_s;
    return status.hasOtherCards ? u"live; cards changed, restart to apply"_s : u"live"_s;
}

void LinkStatusLine::showChassis(const SerialPortController &link)
{
    const LinkStatus status = link.status();
    m_trouble = troubleOf(status);
    const bool isReading = status.state == LinkStatus::State::Reading;
    m_progress->setVisible(isReading);
    if (isReading) {
        m_progress->setMaximum(status.settingsAsked);
        m_progress->setValue(status.settingsRead);
    }
    const QString age =
        status.silentMs < 0 ? u"No message yet"_s : u"Last message %1 s ago"_s.arg(status.silentMs / kMsPerSecond);
    WidgetUpdate::text(m_messages, age + u", "_s + counted(status.timeOuts, u"time-out"_s, u"time-outs"_s) + u", "_s +
                                       counted(status.refusals, u"refusal"_s, u"refusals"_s));
    markTrouble(m_messages, status.isSilent());
}

void LinkStatusLine::showFailure(const QString &address, const QString &mnemonic, bool refused)
{
    if (isOwnRequest(mnemonic))
        return;
    const QString outcome = refused ? u": refused by the chassis"_s : u": no answer"_s;
    const QString text = address + u' ' + mnemonic + outcome;
    WidgetUpdate::text(m_failure, m_failure->fontMetrics().elidedText(text, Qt::ElideMiddle, kFailureWidth));
    markTrouble(m_failure, true);
    m_failure->show();
    m_failureTmr.start(kFailureMs);
}
