#include "frontpanel/SystemSettings.h"

#include "channels/DataSource.h"
#include "channels/DmdChan.h"
#include "channels/UniversalChan.h"
#include "controls/FocusReturn.h"
#include "controls/WidgetUpdate.h"
#include "frontpanel/PanelGrid.h"

using namespace Qt::StringLiterals;

namespace {

using Commands = UniversalChan::Commands;

} // namespace

SystemSettings::SystemSettings(const MainMenus &menus, FocusReturn &focusReturn, QWidget *window)
    : m_menus(menus)
    , m_window(window)
    , m_loadingPresetBox(u"Loading Preset...."_s, window)
    , m_configuringBox(u"Configuring... One Moment"_s, window)
    , m_presetMenu(focusReturn, window)
{
    for (const WaitBox *box : { &m_loadingPresetBox, &m_configuringBox }) {
        QObject::connect(box, &WaitBox::opening, &focusReturn, &FocusReturn::tick);
        QObject::connect(box, &WaitBox::closed, &focusReturn, &FocusReturn::start);
    }
}

void SystemSettings::setChannel(UniversalChan *channel, SerialPortController *link, const PanelGrid *panels,
                                const QString &identifier)
{
    using C = UniversalChan;
    m_channel = channel;
    m_panels = panels;
    m_identifier = identifier;
    m_presetMenu.setLink(link);
    m_settings.add(Commands::SLAVE, channel, &C::getSLAVE, [this](const QString &v) { DisplaySlaving(v); });
    m_settings.add(Commands::TMRF, channel, &C::getTMRF, [this](const QString &v) { Display10MHzReference(v); });
    m_settings.add(Commands::NAME, channel, &C::getNAME, [this](const QString &v) { showTitle(v); });
    m_settings.fill();
}

void SystemSettings::update(const QString &Cmd, const QString &Data)
{
    m_settings.show(Cmd, Data);
    if (const QString demodulator = DataSource::addressOf(Cmd); !demodulator.isEmpty())
        m_panels->show(demodulator, DmdChan::Commands::DSRC, Data);
    else if (Cmd == Commands::PLIST)
        m_presetMenu.takeList(Data);
    else if (Cmd == Commands::PDONE)
        m_loadingPresetBox.update(Data);
    else if (Cmd == Commands::UPDT)
        m_configuringBox.update(Data);
}

void SystemSettings::chooseSlaving(const QString &value)
{
    if (!m_channel)
        return;
    DisplaySlaving(value);
    m_channel->setSLAVE(value);
}

void SystemSettings::chooseReference(const QString &value)
{
    if (!m_channel)
        return;
    Display10MHzReference(value);
    m_channel->setTMRF(value);
}

void SystemSettings::DisplaySlaving(const QString &value)
{
    if (!m_menus.showSlaving(value))
        return;
    m_panels->showSlaved(PanelGrid::Receivers, value == "1"_L1);
    m_panels->showSlaved(PanelGrid::Demodulators, value != "0"_L1);
}

void SystemSettings::showTitle(const QString &systemName)
{
    WidgetUpdate::windowTitle(m_window, u"(SystemID: "_s + m_identifier + u") ZIRVO Local Display (SystemName: "_s +
                                            systemName + u')');
}
