#include "support/LiveHead.h"

#include "dialogs/demodulator/DmdCtrlWindow.h"
#include "head/LinkStatus.h"
#include "support/Wait.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSlider>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kLinks = 5; // with the spectral link, the last

/// Whether what a control holds may depend on what was before. Two stay hidden with older demodulators and are not
/// filled at the start; the sweep range is emptied while the card chooses it, and may stay so while it does not apply.
bool hasPast(const QWidget *widget, bool isHidden)
{
    const QString name = widget->objectName();
    const bool isUnused = name.startsWith(u"checkBoxAutoFMSweep") || name.startsWith(u"cboAnalogPoldmd");
    return (isUnused && isHidden) || (name == u"lineSweepRangedmd" && !widget->isEnabled());
}

/// Labels with a reading, those with the state of a link, and the title that an advanced window was opened with.
bool isReading(const QString &name)
{
    static const QRegularExpression readings(
        u"^lbl(SYNL|CARR|RLSTval|RLSTmark|Demod(mark)?dmd|BitSync|FreqOffsetVal|"
        u"PeakDevVal|AnalogAVoltage|CMBstatus|CMBmode|Countdown|Starting|Focusdmd)"_s);
    return readings.match(name).hasMatch();
}

QString contentOf(const QWidget *widget)
{
    if (const auto *const box = qobject_cast<const QComboBox *>(widget)) {
        QStringList items;
        for (int i = 0; i < box->count(); ++i)
            items += box->itemText(i);
        return u"%1 of %2"_s.arg(box->currentIndex()).arg(items.join(u'|'));
    }
    if (const auto *const box = qobject_cast<const QAbstractSpinBox *>(widget))
        return box->text();
    if (const auto *const slider = qobject_cast<const QSlider *>(widget))
        return QString::number(slider->value());
    if (const auto *const line = qobject_cast<const QLineEdit *>(widget))
        return line->text();
    if (const auto *const box = qobject_cast<const QCheckBox *>(widget))
        return box->isChecked() ? u"checked"_s : u"unchecked"_s;
    if (const auto *const button = qobject_cast<const QPushButton *>(widget))
        return button->text();
    if (const auto *const box = qobject_cast<const QGroupBox *>(widget))
        return box->title();
    if (const auto *const bar = qobject_cast<const QProgressBar *>(widget))
        return u"%1 to %2"_s.arg(bar->minimum()).arg(bar->maximum());
    if (const auto *const label = qobject_cast<const QLabel *>(widget); label && !isReading(label->objectName()))
        return label->text();
    return {};
}

void addShown(QStringList &shown, const QString &where, const QWidget *root)
{
    for (const QWidget *widget : root->findChildren<QWidget *>()) {
        const QString name = widget->objectName();
        if (name.isEmpty() || name.startsWith(u"qt_") || widget->window() != root)
            continue;
        const bool isHidden = !widget->isVisibleTo(root);
        const QString reach = isHidden ? u"hidden"_s : widget->isEnabled() ? u"usable"_s : u"locked"_s;
        const QString content = hasPast(widget, isHidden) ? QString() : contentOf(widget);
        shown += where + name + u'=' + content + u", "_s + reach;
    }
}

bool isQueueEmpty(const SerialPortController *link)
{
    const auto &queue = link->txmtCmdQueue();
    return !queue.inFlight() && queue.waitingCount() == 0;
}

} // namespace

LiveHead::LiveHead() : m_window(std::make_unique<ZIRVOFSMainWindow>())
{
    m_window->setLinks(&m_links);
    m_window->setSystemIdentifier(u"RACK-7"_s);
    m_window->show();
}

LiveHead::~LiveHead() = default;

bool LiveHead::start(bool hasSpectralCard, int timeOutMs)
{
    m_hasSpectralCard = hasSpectralCard;
    m_window->StartComms();
    return waitUntil(
        [this] {
            using State = LinkStatus::State;
            for (SerialPortController *const link : cardLinks()) {
                const State state = link->status().state;
                // While answers are on their way the countdown would throw them away.
                if ((state == State::Opening || state == State::Waiting) && isQueueEmpty(link))
                    link->EstablishCommTmr_Tick();
            }
            return isAtRest();
        },
        timeOutMs);
}

QList<SerialPortController *> LiveHead::cardLinks() const
{
    const QList<SerialPortController *> &links = m_window->SerialPortControllers();
    QList<SerialPortController *> cards{ links.front() };
    if (m_hasSpectralCard && links.size() == kLinks)
        cards += links.back();
    return cards;
}

std::size_t LiveHead::backlog() const
{
    std::size_t count = 0;
    for (const SerialPortController *link : cardLinks())
        count += link->txmtCmdQueue().waitingCount() + (link->txmtCmdQueue().inFlight() ? 1 : 0);
    return count;
}

bool LiveHead::isAtRest() const
{
    const QList<SerialPortController *> links = cardLinks();
    return m_window->SerialPortControllers().size() == kLinks &&
           std::all_of(links.begin(), links.end(), [](const SerialPortController *link) {
               return link->status().state == LinkStatus::State::Live && isQueueEmpty(link);
           });
}

void LiveHead::openAdvancedWindows() const
{
    for (QPushButton *const button : m_window->findChildren<QPushButton *>()) {
        if (button->objectName().startsWith(u"btnAdvanced") && button->isVisible())
            button->click();
    }
    QCoreApplication::processEvents();
}

QMap<QString, DmdCtrlWindow *> LiveHead::advancedWindows() const
{
    static const QRegularExpression number(u"\\(DMD\\.(\\d)\\)"_s);
    QMap<QString, DmdCtrlWindow *> windows;
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (auto *const window = qobject_cast<DmdCtrlWindow *>(widget))
            windows[u'D' + number.match(window->windowTitle()).captured(1)] = window;
    }
    return windows;
}

QStringList LiveHead::shown() const
{
    QStringList shown;
    addShown(shown, {}, m_window.get());
    for (const QAction *action : m_window->findChildren<QAction *>()) {
        if (!action->objectName().isEmpty())
            shown += u"%1=%2%3"_s.arg(action->objectName(), action->isEnabled() ? u"usable"_s : u"locked"_s,
                                      action->isChecked() ? u", checked"_s : QString());
    }
    const auto windows = advancedWindows();
    for (auto window = windows.begin(); window != windows.end(); ++window)
        addShown(shown, window.key() + u' ', window.value());
    return shown;
}
