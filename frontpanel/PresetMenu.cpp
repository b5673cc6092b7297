#include "frontpanel/PresetMenu.h"

#include "channels/UniversalChan.h"
#include "controls/FocusReturn.h"
#include "dialogs/PresetLoad.h"
#include "dialogs/PresetSave.h"
#include "link/SerialPortController.h"

PresetMenu::PresetMenu(FocusReturn &focusReturn, QWidget *window)
    : m_focusReturn(focusReturn)
    , m_window(window)
    , m_patience(window)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(kLongestWaitMs);
    // Or a choice that a silent link never answered would meet the list of a much later one.
    QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] { forgetChoice(); });
}

void PresetMenu::choose(bool &pending)
{
    if (!m_link)
        return;
    pending = true;
    m_patience.start();
    m_link->AddCmdToTxmtCmdQueue(new StandardCommand(nullptr, UniversalChan::Address, UniversalChan::Commands::PLIST,
                                                     {}, StandardCommand::Queued, StandardCommand::Query,
                                                     StandardCommand::kTimeOutMs));
}

void PresetMenu::forgetChoice()
{
    m_loadPending = false;
    m_savePending = false;
    m_patience.stop();
}

void PresetMenu::takeList(const QString &list)
{
    m_presetNames = list.split(u' ');
    m_presetNames.removeLast(); // every name is followed by a blank, so the last part is not one
    const bool load = m_loadPending;
    const bool save = m_savePending;
    forgetChoice();
    if (m_dialogOpen)
        return;
    if (load)
        run<PresetLoad>();
    else if (save)
        run<PresetSave>();
}

template <typename Dialog>
void PresetMenu::run()
{
    m_focusReturn.tick();
    Dialog dialog(m_link, m_presetNames, m_window);
    m_dialogOpen = true;
    dialog.exec();
    m_dialogOpen = false;
    m_focusReturn.start();
}
