#include "frontpanel/AuxiliaryWindows.h"

#include "channels/CmbrChan.h"
#include "channels/DmdChan.h"
#include "channels/TapeChan.h"
#include "controls/FocusReturn.h"
#include "controls/StaleMark.h"
#include "controls/Style.h"
#include "dialogs/demodulator/DmdCtrlWindow.h"
#include "dialogs/demodulator/EyeConstWindow.h"
#include "dialogs/system/CardConfigWindow.h"
#include "dialogs/system/CombinerZero.h"
#include "dialogs/system/SysChanNamingWindow.h"
#include "dialogs/system/TapeCtrlWindow.h"
#include "dialogs/tmoip/tmoipWindow.h"
#include "head/SerialPortController.h"
#include "inventory/Card.h"
#include "inventory/ChannelDirectory.h"

#include <utility>

namespace {

constexpr int kCascadeStep = 16;
constexpr int kCascadeLength = 4;

} // namespace

AuxiliaryWindows::~AuxiliaryWindows()
{
    for (const QPointer<QWidget> &window : windows()) {
        if (window)
            window->disconnect(m_owner);
        delete window;
    }
}

QList<QPointer<QWidget>> AuxiliaryWindows::windows() const
{
    QList<QPointer<QWidget>> windows = m_tmoipWindows;
    for (const Place &place : m_places)
        windows.append(place.window);
    windows.removeAll(nullptr);
    return windows;
}

template <typename Make>
void AuxiliaryWindows::open(std::size_t name, Make make)
{
    Place &place = m_places[name];
    if (QWidget *const closed = place.window; closed && !closed->isVisible()) {
        place = {};
        delete closed; // else it would be deleted from the event loop only
    }
    if (!place.open) {
        place.open = true;
        place.window = make(&place.open);
        prepare(place.window);
    }
    m_focusReturn.tick(); // the window takes the focus, which must not commit a half-typed text
    present(place.window);
}

void AuxiliaryWindows::present(QWidget *window)
{
    window->show();
    window->raise();
    window->activateWindow();
}

void AuxiliaryWindows::prepare(QWidget *window)
{
    Style::forgetWithWindow(window);
    // Without a window manager nothing else places the window, or returns the keyboard when it closes.
    if (!window->testAttribute(Qt::WA_Resized))
        window->adjustSize();
    window->move(m_owner->geometry().center() - window->rect().center());
    mark(window);
    QObject::connect(window, &QObject::destroyed, m_owner, [owner = m_owner] { owner->activateWindow(); });
}

void AuxiliaryWindows::setStale(const QString &reason)
{
    m_staleReason = reason;
    for (const QPointer<QWidget> &window : windows())
        mark(window);
}

/// In the margin above the content.
void AuxiliaryWindows::mark(QWidget *window) const
{
    constexpr int kHeight = 14;
    auto *mark = window->findChild<StaleMark *>();
    if (!mark)
        mark = new StaleMark(window);
    mark->setGeometry(0, 0, window->width(), kHeight);
    mark->setReason(m_staleReason);
}

void AuxiliaryWindows::setChassis(SerialPortController *link, const ChannelDirectory *directory,
                                  const CardFamilies &families)
{
    m_families = families;
    m_link = link;
    m_directory = directory;
}

/// Null if there are not that many channels of this class, or no chassis yet.
template <typename C>
C *AuxiliaryWindows::channel(int position) const
{
    return m_directory ? m_directory->all<C>().value(position) : nullptr;
}

void AuxiliaryWindows::openCards()
{
    if (!m_link)
        return;
    QStringList texts;
    for (const Card &card : m_link->cards())
        texts += card.GetFormattedCardInfoString();
    open(Cards, [&](bool *isOpen) { return new CardConfigWindow(texts, m_owner, isOpen); });
}

void AuxiliaryWindows::openNaming()
{
    if (m_link)
        open(Naming, [&](bool *isOpen) { return new SysChanNamingWindow(m_owner, m_link, isOpen); });
}

void AuxiliaryWindows::openAdvancedSettings(int position)
{
    DmdChan *const demodulator = channel<DmdChan>(position);
    if (!demodulator)
        return;
    const int variant = m_families.hasK3050OrK3060Card ? 1 : 0; // clock phase, not polarity
    open(Advanced + std::size_t(position),
         [&](bool *isOpen) { return new DmdCtrlWindow(variant, m_owner, demodulator, isOpen); });
}

void AuxiliaryWindows::openEyeConst(int position)
{
    if (auto *const demodulator = channel<DmdChan>(position))
        open(EyeConst + std::size_t(position),
             [&](bool *isOpen) { return new EyeConstWindow(m_owner, demodulator, isOpen); });
}

void AuxiliaryWindows::openTape()
{
    if (auto *const tape = channel<TapeChan>(0))
        open(Tape, [&](bool *isOpen) { return new TapeCtrlWindow(m_owner, tape, isOpen); });
}

void AuxiliaryWindows::openTmoip(TmoipCard *card)
{
    m_tmoipWindows.removeAll(nullptr);
    const int offset = m_tmoipOpened++ % kCascadeLength * kCascadeStep;
    m_focusReturn.tick(); // as for the other windows
    auto *const window = new tmoipWindow(m_owner, card);
    m_tmoipWindows.append(window);
    prepare(window);
    window->move(window->pos() + QPoint(offset, offset)); // without a window manager it would cover the one before
    present(window);
}

void AuxiliaryWindows::openCombinerZero(const std::function<void()> &onClosed)
{
    if (!channel<CmbrChan>(0))
        return;
    open(CombinerZeroing, [&](bool *) {
        auto *const window = new CombinerZero(m_owner);
        QObject::connect(window, &CombinerZero::closePressed, m_owner, onClosed);
        return window;
    });
}

void AuxiliaryWindows::endCombinerZero()
{
    Place &place = m_places[CombinerZeroing];
    if (place.window) {
        place.window->disconnect(m_owner); // the owner may be deleted before it
        place.window->deleteLater();
        m_owner->activateWindow();
    }
    place = {};
}

void AuxiliaryWindows::UpdateCmbZero()
{
    auto *const window = qobject_cast<CombinerZero *>(m_places[CombinerZeroing].window);
    if (!window)
        return;
    const CmbrChan &combiner = *channel<CmbrChan>(0);
    window->setCh1In(combiner.getAGCCh1In());
    window->setCh1Out(combiner.getAGCCh1Out());
    window->setCh2In(combiner.getAGCCh2In());
    window->setCh2Out(combiner.getAGCCh2Out());
    window->setTP2(combiner.getTP2());
    window->setTP4(combiner.getTP4());
}
