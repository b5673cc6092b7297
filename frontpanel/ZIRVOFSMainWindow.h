#pragma once

#include "controls/ControlGuard.h"
#include "controls/FocusReturn.h"
#include "frontpanel/AuxiliaryWindows.h"
#include "frontpanel/MainMenus.h"
#include "frontpanel/PanelGrid.h"
#include "frontpanel/SystemSettings.h"
#include "inventory/ChannelDirectory.h"

#include <QList>
#include <QMainWindow>
#include <QStringList>
#include <QTimer>

#include <memory>

class HeadLinks;
class LinkStatusLine;
class SerialPortController;
class TmoipCard;

namespace Ui {
class MainWindow;
}

/// The one main window: panels of the channels found, menus, and the timers that keep the displays fresh. It owns
/// neither channels nor links.
class ZIRVOFSMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit ZIRVOFSMainWindow(QWidget *parent = nullptr);
    /// Stops the chassis' reports.
    ~ZIRVOFSMainWindow() override;

    /// Identity of the chassis that this display head belongs to.
    void setSystemIdentifier(const QString &identifier) { m_systemIdentifier = identifier; }

    /// @param links outlives the window
    void setLinks(HeadLinks *links);

    /// Opens the command link and starts to wait for the chassis.
    void StartComms();

    /// The serial links in order of creation, the command link first.
    [[nodiscard]] QList<SerialPortController *> SerialPortControllers() const;
    /// Whether a changed control was changed by the operator.
    [[nodiscard]] bool AcceptControlChanges() const { return m_guard.AcceptControlChanges(); }
    /// Names of the presets that the chassis listed last.
    [[nodiscard]] const QStringList &PresetNames() const { return m_system.presets().PresetNames(); }
    /// Whether the list of presets is awaited, to load or to save one.
    [[nodiscard]] bool LoadPresetPending() const { return m_system.presets().LoadPresetPending(); }
    [[nodiscard]] bool SavePresetPending() const { return m_system.presets().SavePresetPending(); }

public Q_SLOTS:
    void About_triggered();
    void LoadPreset_triggered() { m_system.presets().load(); }
    void SavePreset_triggered() { m_system.presets().save(); }
    void ExternalRef_triggered() { m_system.chooseReference(QStringLiteral("0")); }
    void InternalRef_triggered() { m_system.chooseReference(QStringLiteral("1")); }
    void NoSlaving_triggered() { m_system.chooseSlaving(QStringLiteral("0")); }
    void DiversitySlaving_triggered() { m_system.chooseSlaving(QStringLiteral("1")); }
    void FrequencyDiversitySlaving_triggered() { m_system.chooseSlaving(QStringLiteral("2")); }
    void SystemCardsConfiguration_triggered() { m_auxiliaryWindows.openCards(); }
    void SystemChannelNaming_triggered() { m_auxiliaryWindows.openNaming(); }
    /// @param position of the demodulator, from 0; without one nothing happens
    void EyeConstWindow_triggered(int position) { m_auxiliaryWindows.openEyeConst(position); }
    void btnDmdAdvSett_clicked(int position) { m_auxiliaryWindows.openAdvancedSettings(position); }
    void CombinerZeroTriggerd();
    void Tape_triggered() { m_auxiliaryWindows.openTape(); }
    /// Connected by the form.
    void on_actionTMoIP_triggered();
    void CombinerZeroClosed() { m_auxiliaryWindows.endCombinerZero(); }

    /// Refreshes one kind of channel at each tick, so that each kind is refreshed about once a second.
    void UpdateAllDynamicParamsTmr_Tick();
    void UpdateRcvrDynamicParamsTmr_Tick() { refresh(PanelGrid::Receivers); }
    void UpdateCmbrDynamicParamsTmr_Tick() { refresh(PanelGrid::Combiners); }
    void UpdateDmdDynamicParamsTmr_Tick() { refresh(PanelGrid::Demodulators); }
    void RemoveControlFocusTmr_Tick() { m_focusReturn.tick(); }

    /// Shows a value in force on the panel of the channel that has this address.
    void UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                       const QString &FailedData);
    /// Every setting of the command link's channels is known: fills the panels and opens the further links.
    void ObtainedAllSettings();
    /// The spectral link's channels are known: the links to the remote client serve them as well.
    void SpecObtainedAllSettings();
    /// The chassis has a TMoIP card.
    void SetTmoipCardList(TmoipCard *card);

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void createPanels();
    void connectMenus();

    void SetChanList();
    void showSystem();
    void showPanels();
    void showMissingDevice(SerialPortController *link);

    void refresh(PanelGrid::Kind kind);
    void showLinks();
    void UpdateCmbZero() { m_auxiliaryWindows.UpdateCmbZero(); }

    std::unique_ptr<Ui::MainWindow> ui;
    ControlGuard m_guard;
    LinkStatusLine *m_linkStatusLine;
    FocusReturn m_focusReturn;
    MainMenus m_menus;
    SystemSettings m_system;
    std::unique_ptr<PanelGrid> m_panels;

    QString m_systemIdentifier;
    HeadLinks *m_links = nullptr;
    ChannelDirectory m_directory;
    QList<TmoipCard *> m_tmoipCardList;

    QTimer m_updateAllDynamicParamsTmr;
    int m_dynamicParamsPhase = PanelGrid::Receivers;

    AuxiliaryWindows m_auxiliaryWindows; ///< the last member, so that its windows go before what they refer to
};
