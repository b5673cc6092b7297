#pragma once

#include "controls/ControlGuard.h"
#include "controls/FocusReturn.h"
#include "dialogs/WaitBox.h"
#include "frontpanel/AuxiliaryWindows.h"
#include "frontpanel/PresetMenu.h"
#include "inventory/CardFamilies.h"
#include "inventory/ChannelDirectory.h"

#include <QList>
#include <QMainWindow>
#include <QStringList>
#include <QTimer>

#include <array>
#include <memory>

class ChannelPanel;
class CombinerPanel;
class DemodulatorPanel;
class HeadLinks;
class LinkStatusLine;
class CmbrChan;
class ReceiverPanel;
class SerialPortController;
class TmoipCard;
class UniversalChan;

namespace Ui {
class MainWindow;
}

/// The one main window: panels of the channels found, menus, and the timers that keep the displays fresh.
///
/// It knows channels, never bytes, and owns neither channels nor links.
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

    /// The serial links in the order of their making, the command link first.
    [[nodiscard]] QList<SerialPortController *> SerialPortControllers() const;
    /// Whether a changed control was changed by the operator.
    [[nodiscard]] bool AcceptControlChanges() const { return m_guard.AcceptControlChanges(); }
    /// Names of the presets that the chassis listed last.
    [[nodiscard]] const QStringList &PresetNames() const { return m_presetMenu.PresetNames(); }
    /// Whether the chassis' list of presets is waited for, to load or to save one.
    [[nodiscard]] bool LoadPresetPending() const { return m_presetMenu.LoadPresetPending(); }
    [[nodiscard]] bool SavePresetPending() const { return m_presetMenu.SavePresetPending(); }

public Q_SLOTS:
    void About_triggered();
    void LoadPreset_triggered() { m_presetMenu.load(); }
    void SavePreset_triggered() { m_presetMenu.save(); }
    void ExternalRef_triggered();
    void InternalRef_triggered();
    void NoSlaving_triggered();
    void DiversitySlaving_triggered();
    void FrequencyDiversitySlaving_triggered();
    void SystemCardsConfiguration_triggered();
    void SystemChannelNaming_triggered();
    /// @param position of the demodulator, from 0; without one nothing happens
    void EyeConstWindow_triggered(int position);
    void btnDmdAdvSett_clicked(int position);
    void CombinerZeroTriggerd();
    void Tape_triggered();
    /// Connected by the form.
    void on_actionTMoIP_triggered();
    void CombinerZeroClosed() { m_auxiliaryWindows.endCombinerZero(); }

    /// Refreshes one kind of channel a tick, so each kind about once a second.
    void UpdateAllDynamicParamsTmr_Tick();
    void UpdateRcvrDynamicParamsTmr_Tick() { refresh(Receivers); }
    void UpdateCmbrDynamicParamsTmr_Tick() { refresh(Combiners); }
    void UpdateDmdDynamicParamsTmr_Tick() { refresh(Demodulators); }
    void RemoveControlFocusTmr_Tick() { m_focusReturn.tick(); }

    /// Shows a value in force on the panel of the channel that has this address.
    void UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                       const QString &FailedData);
    /// Every setting of the command link's channels is known: builds the panels and opens the further links.
    void ObtainedAllSettings();
    /// The spectral link's channels are known: the links to the remote client serve them as well.
    void SpecObtainedAllSettings();
    /// The chassis has a TMoIP card.
    void SetTmoipCardList(TmoipCard *card);

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    enum DynamicParamsPhase { Receivers, Combiners, Demodulators, PhaseCount };

    void createPanels();
    void connectMenus();

    void SetChanList();
    void showSystem();
    void enableMenus();
    void fillPanels();
    template <typename C, typename Panel, typename... Families>
    void fill(const QList<Panel *> &panels, const Families &...families);
    void showPanels();
    void showTape();
    void showMissingDevice(SerialPortController *link);

    void refresh(DynamicParamsPhase phase);
    void showLinks();
    void UpdateCmbZero();
    [[nodiscard]] QList<ChannelPanel *> panels() const;
    [[nodiscard]] QList<QAction *> eyeActions() const;

    void showOnPanel(const QString &address, const QString &mnemonic, const QString &value);
    void updateSystemSetting(const QString &Cmd, const QString &Data);
    void showTitle(const QString &systemName);
    void DisplaySlaving(const QString &value);
    void Display10MHzReference(const QString &value);
    void chooseSlaving(const QString &value);
    void chooseReference(const QString &value);

    std::unique_ptr<Ui::MainWindow> ui;
    ControlGuard m_guard;
    LinkStatusLine *m_linkStatusLine;
    FocusReturn m_focusReturn;
    WaitBox m_loadingPresetBox;
    WaitBox m_configuringBox;
    PresetMenu m_presetMenu;
    std::array<QList<ChannelPanel *>, PhaseCount> m_panels; ///< every place of the window, by kind
    QList<ReceiverPanel *> m_receiverPanels;
    QList<CombinerPanel *> m_combinerPanels;
    QList<DemodulatorPanel *> m_demodulatorPanels;

    QString m_systemIdentifier;
    HeadLinks *m_links = nullptr;
    CardFamilies m_families;
    ChannelDirectory m_directory;
    UniversalChan *m_sysChan = nullptr;
    QList<TmoipCard *> m_tmoipCardList;
    CmbrChan *m_combiner = nullptr; ///< the first one

    QTimer m_updateAllDynamicParamsTmr;
    int m_dynamicParamsPhase = Receivers;

    AuxiliaryWindows m_auxiliaryWindows; ///< last here, so its windows go before what they refer to
};
