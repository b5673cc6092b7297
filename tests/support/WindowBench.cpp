#include "support/WindowBench.h"

#include "channels/CmbrChan.h"
#include "channels/DmdChan.h"
#include "channels/RcvrChan.h"
#include "channels/UniversalChan.h"
#include "controls/DecimalSpinBox.h"
#include "controls/FocusReturn.h"
#include "frontpanel/LinkStatusLine.h"
#include "head/SettingsCheck.h"
#include "support/Wait.h"

#include <QLabel>
#include <QTest>

namespace {

template <typename C>
C *channel(const SerialPortController *link, int index)
{
    for (Channel *candidate : link->channels()) {
        if (auto *const found = qobject_cast<C *>(candidate); found && index-- == 0)
            return found;
    }
    return nullptr;
}

} // namespace

WindowBench::WindowBench() : m_window(std::make_unique<ZIRVOFSMainWindow>())
{
    m_window->setLinks(&m_headLinks);
    m_window->setSystemIdentifier(QStringLiteral("RACK-7"));
}

WindowBench::~WindowBench() = default;

void WindowBench::endWindow() { m_window.reset(); }

void WindowBench::start()
{
    m_window->show();
    m_window->StartComms();
    m_commandLink = m_window->SerialPortControllers().front();
}

bool WindowBench::goLive()
{
    chassis().setAnswering(true);
    if (!m_commandLink)
        start();
    m_commandLink->EstablishCommTmr_Tick();
    if (!chassis().waitForFrame("U0:TRON:ON", 20'000))
        return false;
    m_window->activateWindow();
    if (!QTest::qWaitForWindowActive(m_window.get()))
        return false;
    QByteArrayList sent = sentBy([] {});
    sent.removeIf([](const QByteArray &frame) { // a demodulator queries its filters after the end of start-up
        return frame.startsWith('D') && (frame.endsWith(":IFFL") || frame.endsWith(":VFFL"));
    });
    return sent.isEmpty();
}

void WindowBench::stopReadingBack()
{
    m_commandLink->findChild<SettingsCheck *>()->setActive(false);
    (void)sentBy([] {}); // until pending messages are answered
}

FocusReturn &WindowBench::focusReturn() const { return *m_window->findChild<FocusReturn *>(); }

void WindowBench::type(QWidget &field, const QString &text)
{
    field.setFocus();
    QTest::keySequence(&field, QKeySequence::SelectAll);
    QTest::keyClicks(&field, text);
}

void WindowBench::typeHalfAnEntry() const
{
    auto &frequency = find<DecimalSpinBox>(QStringLiteral("doubleSpinBoxFREQch1"));
    type(frequency, QStringLiteral("2300"));
    if (!frequency.isHalfTyped() || !frequency.hasFocus() || !focusReturn().isRunning())
        qFatal("the entry is not half-typed");
    focusReturn().stop();
}

bool WindowBench::isEntryGivenUp(bool returns) const
{
    const auto &frequency = find<DecimalSpinBox>(QStringLiteral("doubleSpinBoxFREQch1"));
    return frequency.text() == QLatin1String("2250.5") && !frequency.isHalfTyped() &&
           focusReturn().isRunning() == returns;
}

QTimer *WindowBench::runningTimer(int intervalMs) const
{
    for (QTimer *timer : m_window->findChildren<QTimer *>()) {
        if (timer->isActive() && timer->interval() == intervalMs)
            return timer;
    }
    return nullptr;
}

QStringList WindowBench::words() const
{
    auto *const line = qobject_cast<LinkStatusLine *>(m_window->statusBar());
    line->refresh();
    QStringList texts;
    for (const QLabel *label : line->findChildren<QLabel *>())
        texts += label->isVisible() ? QStringList{ label->text() } : QStringList();
    return texts;
}

UniversalChan *WindowBench::system() const { return channel<UniversalChan>(m_commandLink, 0); }

RcvrChan *WindowBench::receiver(int index) const { return channel<RcvrChan>(m_commandLink, index); }

CmbrChan *WindowBench::combiner(int index) const { return channel<CmbrChan>(m_commandLink, index); }

DmdChan *WindowBench::demodulator(int index) const { return channel<DmdChan>(m_commandLink, index); }

QByteArrayList WindowBench::sentBy(const std::function<void()> &act)
{
    const auto mark = chassis().frames().size();
    act();
    QCoreApplication::processEvents(); // queued calls first, else the marker would overtake them
    const QString marker = QString::number(++m_marker);
    system()->setTIME(marker);
    if (!waitUntil([&] { return system()->getTIME() == marker; }, 10'000))
        return { "(no marker)" };
    QCoreApplication::processEvents();
    QByteArrayList sent = chassis().framesSince(mark);
    sent.removeOne("U0:TIME:" + marker.toLatin1());
    return sent;
}

void WindowBench::report(const QByteArrayList &frames)
{
    for (const QByteArray &frame : frames)
        chassis().sendFrame(frame);
    const QString last = QString::number(++m_marker);
    chassis().sendFrame("U0:LAGC:" + last.toLatin1());
    if (!waitUntil([&] { return system()->getLAGC() == last; }))
        qFatal("the reports did not arrive");
    QCoreApplication::processEvents();
}

bool WindowBench::takeSteps(QList<Step> steps)
{
    const QDeadlineTimer deadline(20'000);
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        if (deadline.hasExpired()) {
            timer.stop();
            while (auto *const open = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
                open->done(QDialog::Rejected);
        } else if (!steps.isEmpty() && steps.first().when()) {
            steps.takeFirst().then();
        }
    });
    timer.start(1);
    return waitUntil([&] { return steps.isEmpty() || !timer.isActive(); }, 30'000) && steps.isEmpty();
}

bool WindowBench::hasStarted(SerialPortController &link, const FarEnd &end)
{
    using State = LinkStatus::State;
    const State state = link.status().state;
    const auto &queue = link.txmtCmdQueue();
    // The countdown would discard answers that are under way.
    if ((state == State::Opening || state == State::Waiting) && !queue.inFlight() && queue.waitingCount() == 0)
        link.EstablishCommTmr_Tick();
    return end.frames().contains("U0:TRON:ON");
}

QMessageBox *WindowBench::box(const QString &text)
{
    for (QMessageBox *open : visible<QMessageBox>()) {
        if (open->text() == text)
            return open;
    }
    return nullptr;
}

qsizetype WindowBench::boxCount() { return visible<QMessageBox>().size(); }
