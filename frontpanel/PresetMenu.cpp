#include "frontpanel/PresetMenu.h"

#include "channels/UniversalChan.h"
#include "controls/FocusReturn.h"
#include "dialogs/presets/PresetLoad.h"
#include "dialogs/presets/PresetSave.h"
#include "head/SerialPortController.h"

PresetMenu::PresetMenu(FocusReturn &focusReturn, QWidget *window)
    : m_focusReturn(focusReturn)
    , m_window(window)
    , m_patience(window)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(kLongestWaitMs);
    // Else a choice on a silent link would be served by the list of a much later query.
    QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] { forgetChoices(); });
}

void PresetMenu::setLink(SerialPortController *link)
{
    m_link = link;
    // Queued like the lists, so that outcomes arrive in the order of the queries.
    QObject::connect(
        link, &SerialPortController::RequestFailed, &m_patience,
        [this](const QString &, const QString &mnemonic) {
            if (mnemonic == UniversalChan::Commands::PLIST)
                endRequest();
        },
        Qt::QueuedConnection);
}

void PresetMenu::choose(Choice choice)
{
    if (!m_link)
        return;
    m_asked.append(choice);
    m_patience.start();
    m_link->AddCmdToTxmtCmdQueue(
        new StandardCommand(StandardCommand::query(nullptr, UniversalChan::Address, UniversalChan::Commands::PLIST)));
}

void PresetMenu::forgetChoices()
{
    m_asked.fill(Choice::Nothing);
    m_patience.stop();
}

/// The oldest query has its outcome, which ends the choice behind it.
void PresetMenu::endRequest()
{
    if (!m_asked.isEmpty())
        m_asked.removeFirst();
}

void PresetMenu::takeList(const QString &list)
{
    m_presetNames = list.split(u' ');
    m_presetNames.removeLast(); // every name is followed by a blank, so the last part is empty
    const bool load = LoadPresetPending();
    const bool save = SavePresetPending();
    forgetChoices();
    endRequest();
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
