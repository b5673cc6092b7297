#pragma once

#include "controls/SettingTable.h"
#include "dialogs/WaitBox.h"
#include "frontpanel/MainMenus.h"
#include "frontpanel/PresetMenu.h"

class FocusReturn;
class PanelGrid;
class SerialPortController;
class UniversalChan;

/// What the main window shows and changes of the system channel: slaving, 10 MHz reference, names, presets, the data
/// sources of the demodulators, and the boxes that are open while the chassis is busy.
class SystemSettings
{
public:
    /// All outlive this.
    SystemSettings(const MainMenus &menus, FocusReturn &focusReturn, QWidget *window);
    Q_DISABLE_COPY_MOVE(SystemSettings)

    /// Fills menus, panels and title. Until then a choice does nothing.
    /// @param identifier identity of the chassis, for the title
    void setChannel(UniversalChan *channel, SerialPortController *link, const PanelGrid *panels,
                    const QString &identifier);
    [[nodiscard]] UniversalChan *channel() const { return m_channel; }
    [[nodiscard]] PresetMenu &presets() { return m_presetMenu; }
    [[nodiscard]] const PresetMenu &presets() const { return m_presetMenu; }

    /// Shows a value in force. May run a dialog or a box.
    void update(const QString &Cmd, const QString &Data);
    /// Shows the operator's choice at once and sends it, both as wire text.
    void chooseSlaving(const QString &value);
    void chooseReference(const QString &value);

private:
    void DisplaySlaving(const QString &value);
    void Display10MHzReference(const QString &value) { m_menus.showReference(value); }
    void showTitle(const QString &systemName);

    const MainMenus &m_menus;
    QWidget *m_window;
    WaitBox m_loadingPresetBox;
    WaitBox m_configuringBox;
    PresetMenu m_presetMenu;
    SettingTable m_settings;
    UniversalChan *m_channel = nullptr;
    const PanelGrid *m_panels = nullptr;
    QString m_identifier;
};
