#include "frontpanel/ZIRVOFSMainWindow.h"

#include "channels/CmbrChan.h"
#include "channels/DataSource.h"
#include "channels/DmdChan.h"
#include "channels/RcvrChan.h"
#include "channels/TapeChan.h"
#include "channels/TmoipCard.h"
#include "channels/UniversalChan.h"
#include "controls/ValueText.h"
#include "controls/WidgetUpdate.h"
#include "frontpanel/CombinerPanel.h"
#include "frontpanel/DemodulatorPanel.h"
#include "frontpanel/LinkStatusLine.h"
#include "frontpanel/ReceiverPanel.h"
#include "head/HeadLinks.h"
#include "inventory/Card.h"
#include "ui_MainWindow.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QHash>
#include <QMessageBox>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int kReceiverPanels = 2;
constexpr int kStartupTickMs = 1000;
constexpr int kStatusTickMs = 333;
constexpr int kFinalWriteMs = 1000;

constexpr int kDemodulatorPanels = AuxiliaryWindows::kDemodulators;

struct PanelPlace
{
    int row;
    int column;
};
// Signal flow as a grid: the combiner between the receivers, the demodulators below.
constexpr PanelPlace kReceiverPlaces[kReceiverPanels] = { { 0, 0 }, { 0, 2 } };
constexpr PanelPlace kCombinerPlace = { 0, 1 };
constexpr PanelPlace kDemodulatorPlaces[kDemodulatorPanels] = { { 1, 0 }, { 1, 1 }, { 1, 2 } };

} // namespace

ZIRVOFSMainWindow::ZIRVOFSMainWindow(QWidget *parent)
    : QMainWindow(parent)
    , ui(std::make_unique<Ui::MainWindow>())
    , m_linkStatusLine(new LinkStatusLine(this))
    , m_focusReturn(this)
    , m_loadingPresetBox(u"Loading Preset...."_s, this)
    , m_configuringBox(u"Configuring... One Moment"_s, this)
    , m_presetMenu(m_focusReturn, this)
    , m_auxiliaryWindows(m_focusReturn, this)
{
    ui->setupUi(this);
    setWindowIcon(QIcon(u":/new/prefix1/ANTENNA.ICO"_s));
    setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::CustomizeWindowHint);
    setLocale(QLocale::c());
    createPanels();
    connectMenus();
    for (WaitBox *box : { &m_loadingPresetBox, &m_configuringBox }) {
        connect(box, &WaitBox::opening, &m_focusReturn, &FocusReturn::tick);
        connect(box, &WaitBox::closed, &m_focusReturn, &FocusReturn::start);
    }
    m_updateAllDynamicParamsTmr.setInterval(kStatusTickMs);
    connect(&m_updateAllDynamicParamsTmr, &QTimer::timeout, this, &ZIRVOFSMainWindow::UpdateAllDynamicParamsTmr_Tick);
    setStatusBar(m_linkStatusLine);
    connect(m_linkStatusLine, &LinkStatusLine::refreshed, this, &ZIRVOFSMainWindow::showLinks);
    m_focusReturn.giveBack();
}

ZIRVOFSMainWindow::~ZIRVOFSMainWindow()
{
    if (SerialPortController *const link = m_links ? m_links->commandLink() : nullptr)
        link->writeFinalReportsOff(kFinalWriteMs);
    // The panels refer to the guard and the focus return, so they go first; losing the focus must not commit an entry.
    const ControlGuard::Scope ending(m_guard);
    delete takeCentralWidget();
}

void ZIRVOFSMainWindow::createPanels()
{
    const PanelContext context{ m_guard, m_focusReturn };
    const auto place = [this](ChannelPanel *panel, DynamicParamsPhase kind, const PanelPlace &where) {
        ui->panelGrid->addWidget(panel, where.row, where.column);
        m_panels[kind].append(panel);
    };
    for (int i = 0; i < kReceiverPanels; ++i) {
        m_receiverPanels.append(new ReceiverPanel(i + 1, context, ui->panelPage));
        place(m_receiverPanels.back(), Receivers, kReceiverPlaces[i]);
    }
    m_combinerPanels.append(new CombinerPanel(1, context, ui->panelPage));
    place(m_combinerPanels.back(), Combiners, kCombinerPlace);
    for (int i = 0; i < kDemodulatorPanels; ++i) {
        m_demodulatorPanels.append(new DemodulatorPanel(i + 1, context, ui->panelPage));
        place(m_demodulatorPanels.back(), Demodulators, kDemodulatorPlaces[i]);
    }
    m_focusReturn.setHolder(m_receiverPanels.front()->neutralFocusHolder());
}

void ZIRVOFSMainWindow::connectMenus()
{
    // Queued, so that a box or window never runs inside the menu's own event handling.
    const auto onTriggered = [this](QAction *action, void (ZIRVOFSMainWindow::*slot)()) {
        connect(action, &QAction::triggered, this, slot, Qt::QueuedConnection);
    };
    onTriggered(ui->actionAbout, &ZIRVOFSMainWindow::About_triggered);
    onTriggered(ui->actionLoadPreset, &ZIRVOFSMainWindow::LoadPreset_triggered);
    onTriggered(ui->actionSavePreset, &ZIRVOFSMainWindow::SavePreset_triggered);
    onTriggered(ui->actionSystemCardsConfiguration, &ZIRVOFSMainWindow::SystemCardsConfiguration_triggered);
    onTriggered(ui->actionSystemChannelNaming, &ZIRVOFSMainWindow::SystemChannelNaming_triggered);
    onTriggered(ui->actionTape, &ZIRVOFSMainWindow::Tape_triggered);
    connect(ui->actionCombiner_Zero, &QAction::triggered, this, &ZIRVOFSMainWindow::CombinerZeroTriggerd);
    for (int i = 0; i < kDemodulatorPanels; ++i) {
        connect(
            eyeActions()[i], &QAction::triggered, this, [this, i] { EyeConstWindow_triggered(i); },
            Qt::QueuedConnection);
        connect(m_demodulatorPanels[i], &DemodulatorPanel::advancedSettingsRequested, this,
                [this, i] { btnDmdAdvSett_clicked(i); });
    }
    onTriggered(ui->actionExternalRef, &ZIRVOFSMainWindow::ExternalRef_triggered);
    onTriggered(ui->actionInternalRef, &ZIRVOFSMainWindow::InternalRef_triggered);
    onTriggered(ui->actionNoSlaving, &ZIRVOFSMainWindow::NoSlaving_triggered);
    onTriggered(ui->actionDiversitySlaving, &ZIRVOFSMainWindow::DiversitySlaving_triggered);
    onTriggered(ui->actionFrequencyDiversitySlaving, &ZIRVOFSMainWindow::FrequencyDiversitySlaving_triggered);
}

bool ZIRVOFSMainWindow::event(QEvent *event)
{
    // Without a window manager nobody hands the keyboard back when a modal box has closed.
    if (event->type() == QEvent::WindowUnblocked)
        activateWindow();
    return QMainWindow::event(event);
}

void ZIRVOFSMainWindow::closeEvent(QCloseEvent *event)
{
    m_focusReturn.tick(); // half an entry is not one
    // Boxes without a parent would keep the application alive behind a closed window.
    QMainWindow::closeEvent(event);
    QCoreApplication::exit(0);
}

// Start-up

void ZIRVOFSMainWindow::setLinks(HeadLinks *links)
{
    m_links = links;
    connect(links, &HeadLinks::added, m_linkStatusLine, &LinkStatusLine::addLink);
    connect(links, &HeadLinks::deviceMissing, this, &ZIRVOFSMainWindow::showMissingDevice);
    connect(links, &HeadLinks::spectralSettingsObtained, this, &ZIRVOFSMainWindow::SpecObtainedAllSettings);
}

void ZIRVOFSMainWindow::StartComms()
{
    SerialPortController *const link = m_links->openCommandLink(m_systemIdentifier);
    connect(link, &SerialPortController::CommunicationEstablished, this,
            [this] { ui->lblStarting->setText(u"Reading the settings"_s); });
    connect(link, &SerialPortController::AllSettingsObtained, this, &ZIRVOFSMainWindow::ObtainedAllSettings);
    connect(link, &SerialPortController::TmoipCardObtained, this, &ZIRVOFSMainWindow::SetTmoipCardList);
    link->StartEstablishCommTmr(kStartupTickMs, ui->lblCountdown);
}

QList<SerialPortController *> ZIRVOFSMainWindow::SerialPortControllers() const
{
    return m_links ? m_links->all() : QList<SerialPortController *>();
}

/// Blocks nothing, and closes by itself when the device is there.
void ZIRVOFSMainWindow::showMissingDevice(SerialPortController *link)
{
    auto *const box = new QMessageBox;
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setText(link->openFailureText());
    connect(box, &QDialog::finished, this, &QWidget::activateWindow);
    connect(link, &SerialPortController::DeviceFound, box, &QDialog::accept);
    connect(this, &QObject::destroyed, box, [box] { delete box; });
    box->open();
}

void ZIRVOFSMainWindow::ObtainedAllSettings()
{
    SetChanList();
    showSystem();
    enableMenus();
    fillPanels();
    showPanels();
    showTape();
    m_links->openFurtherLinks();
    m_updateAllDynamicParamsTmr.start();
}

void ZIRVOFSMainWindow::SetChanList()
{
    m_directory.assign(m_links->commandLink()->channels());
    m_sysChan = m_directory.all<UniversalChan>().value(0);
    m_combiner = m_directory.all<CmbrChan>().value(0);
}

void ZIRVOFSMainWindow::showSystem()
{
    connect(m_sysChan, &Channel::SettingChanged, this, &ZIRVOFSMainWindow::UpdateSetting, Qt::QueuedConnection);
    DisplaySlaving(m_sysChan->getSLAVE());
    Display10MHzReference(m_sysChan->getTMRF());
    showTitle(m_sysChan->getNAME());
}

void ZIRVOFSMainWindow::enableMenus()
{
    m_presetMenu.setLink(m_links->commandLink());
    const QList<QAction *> windows{ ui->actionSystemCardsConfiguration, ui->actionSystemChannelNaming };
    for (QAction *action :
         ui->menuPresets->actions() + ui->menuSlaving->actions() + ui->menu10MHzReference->actions() + windows)
        action->setEnabled(true);
    ui->actionCombiner_Zero->setEnabled(m_combiner != nullptr);
    for (qsizetype i = 0; i < eyeActions().size(); ++i)
        eyeActions()[i]->setEnabled(i < m_directory.all<DmdChan>().size());
}

void ZIRVOFSMainWindow::fillPanels()
{
    m_families = CardFamilies::of(m_links->commandLink()->cards());
    if (m_families.hasQLDXCard) {
        for (const ReceiverPanel *panel : std::as_const(m_receiverPanels))
            connect(panel, &ReceiverPanel::playbackShown, m_combinerPanels.front(),
                    [this](bool playing) { m_combinerPanels.front()->showAgcLevels(!playing); });
    }
    fill<RcvrChan>(m_receiverPanels);
    fill<CmbrChan>(m_combinerPanels, m_families);
    fill<DmdChan>(m_demodulatorPanels, m_families);
}

/// Gives the panels of one kind their channels; channels beyond the window's places get none.
template <typename C, typename Panel, typename... Families>
void ZIRVOFSMainWindow::fill(const QList<Panel *> &panels, const Families &...families)
{
    const auto channels = m_directory.all<C>();
    for (qsizetype i = 0; i < channels.size() && i < panels.size(); ++i) {
        panels[i]->setChannel(channels[i], families...);
        connect(channels[i], &Channel::SettingChanged, this, &ZIRVOFSMainWindow::UpdateSetting, Qt::QueuedConnection);
    }
}

void ZIRVOFSMainWindow::showPanels()
{
    const auto panelList = panels();
    for (ChannelPanel *panel : panelList) {
        int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
        ui->panelGrid->getItemPosition(ui->panelGrid->indexOf(panel), &row, &column, &rowSpan, &columnSpan);
        if (!panel->isHidden())
            ui->panelGrid->setColumnStretch(column, 1); // panels share the width, empty columns take none
    }
    if (std::none_of(panelList.begin(), panelList.end(), [](const ChannelPanel *p) { return !p->isHidden(); })) {
        ui->lblStarting->setText(u"The chassis reports no channel to show"_s);
        return;
    }
    ui->pages->setCurrentWidget(ui->panelPage);
    m_focusReturn.giveBack();
}

void ZIRVOFSMainWindow::showTape()
{
    if (m_directory.all<TapeChan>().isEmpty())
        return;
    ui->actionTape->setEnabled(true);
    for (ReceiverPanel *panel : std::as_const(m_receiverPanels))
        panel->showPlayback();
}

void ZIRVOFSMainWindow::SpecObtainedAllSettings() { m_links->shareSpectralChannels(); }

void ZIRVOFSMainWindow::SetTmoipCardList(TmoipCard *card)
{
    m_tmoipCardList.append(card);
    ui->actionTMoIP->setEnabled(true);
}

// Status

void ZIRVOFSMainWindow::showLinks()
{
    if (!m_sysChan)
        return; // nothing is shown yet
    m_linkStatusLine->setClientPresent(m_sysChan->getREMOTE() == "1"_L1);
    for (ChannelPanel *panel : panels())
        panel->setStale(m_linkStatusLine->trouble());
    m_auxiliaryWindows.setStale(m_linkStatusLine->trouble());
}

void ZIRVOFSMainWindow::UpdateAllDynamicParamsTmr_Tick()
{
    refresh(static_cast<DynamicParamsPhase>(m_dynamicParamsPhase));
    m_dynamicParamsPhase = (m_dynamicParamsPhase + 1) % PhaseCount;
}

void ZIRVOFSMainWindow::refresh(DynamicParamsPhase phase)
{
    for (ChannelPanel *panel : m_panels[phase]) {
        if (panel->hasChannel())
            panel->updateDynamicParams();
    }
    if (phase == Combiners)
        UpdateCmbZero();
}

void ZIRVOFSMainWindow::UpdateCmbZero()
{
    if (m_combiner)
        m_auxiliaryWindows.UpdateCmbZero(*m_combiner);
}

QList<ChannelPanel *> ZIRVOFSMainWindow::panels() const
{
    return m_panels[Receivers] + m_panels[Combiners] + m_panels[Demodulators];
}

// Settings

void ZIRVOFSMainWindow::UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                                      const QString &FailedData)
{
    // After a refused set the channels report the value still held, so both outcomes are shown alike.
    Q_UNUSED(CmdFailed)
    Q_UNUSED(FailedData)
    if (m_sysChan && Module == m_sysChan->address()) {
        updateSystemSetting(Cmd, Data);
        return;
    }
    showOnPanel(Module, Cmd, Data);
}

void ZIRVOFSMainWindow::showOnPanel(const QString &address, const QString &mnemonic, const QString &value)
{
    for (ChannelPanel *panel : panels()) {
        if (panel->hasChannel() && panel->address() == address)
            panel->UpdateSetting(mnemonic, value);
    }
}

void ZIRVOFSMainWindow::updateSystemSetting(const QString &Cmd, const QString &Data)
{
    if (const QString demodulator = DataSource::addressOf(Cmd); !demodulator.isEmpty()) {
        showOnPanel(demodulator, DmdChan::Commands::DSRC, Data);
        return;
    }
    using Commands = UniversalChan::Commands;
    using Show = void (*)(ZIRVOFSMainWindow &, const QString &);
    using W = ZIRVOFSMainWindow;
    static const QHash<QString, Show> routes{
        { Commands::PLIST, [](W &w, const QString &v) { w.m_presetMenu.takeList(v); } },
        { Commands::PDONE, [](W &w, const QString &v) { w.m_loadingPresetBox.update(v); } },
        { Commands::UPDT, [](W &w, const QString &v) { w.m_configuringBox.update(v); } },
        { Commands::TMRF, [](W &w, const QString &v) { w.Display10MHzReference(v); } },
        { Commands::SLAVE, [](W &w, const QString &v) { w.DisplaySlaving(v); } },
        { Commands::NAME, [](W &w, const QString &v) { w.showTitle(v); } },
    };
    if (const Show route = routes.value(Cmd))
        route(*this, Data);
}

void ZIRVOFSMainWindow::showTitle(const QString &systemName)
{
    const QString title =
        u"(SystemID: "_s + m_systemIdentifier + u") ZIRVO Local Display (SystemName: "_s + systemName + u')';
    WidgetUpdate::windowTitle(this, title);
}

void ZIRVOFSMainWindow::DisplaySlaving(const QString &value)
{
    const QList<QAction *> modes{ ui->actionNoSlaving, ui->actionDiversitySlaving,
                                  ui->actionFrequencyDiversitySlaving };
    const QStringList values{ u"0"_s, u"1"_s, u"2"_s };
    const auto chosen = values.indexOf(value);
    if (chosen < 0)
        return;
    for (qsizetype mode = 0; mode < modes.size(); ++mode)
        modes[mode]->setChecked(mode == chosen);
    for (ChannelPanel *panel : std::as_const(m_panels[Receivers]))
        panel->showSlaved(value == "1"_L1);
    for (ChannelPanel *panel : std::as_const(m_panels[Demodulators]))
        panel->showSlaved(value != "0"_L1);
}

void ZIRVOFSMainWindow::Display10MHzReference(const QString &value)
{
    if (value != "0"_L1 && value != "1"_L1 && ValueText::isKnown(value))
        return; // neither is chosen as long as it is not known
    ui->actionExternalRef->setChecked(value == "0"_L1);
    ui->actionInternalRef->setChecked(value == "1"_L1);
}

// Menus

void ZIRVOFSMainWindow::NoSlaving_triggered() { chooseSlaving(u"0"_s); }

void ZIRVOFSMainWindow::DiversitySlaving_triggered() { chooseSlaving(u"1"_s); }

void ZIRVOFSMainWindow::FrequencyDiversitySlaving_triggered() { chooseSlaving(u"2"_s); }

void ZIRVOFSMainWindow::chooseSlaving(const QString &value)
{
    if (!m_sysChan)
        return;
    DisplaySlaving(value);
    m_sysChan->setSLAVE(value);
}

void ZIRVOFSMainWindow::ExternalRef_triggered() { chooseReference(u"0"_s); }

void ZIRVOFSMainWindow::InternalRef_triggered() { chooseReference(u"1"_s); }

void ZIRVOFSMainWindow::chooseReference(const QString &value)
{
    if (!m_sysChan)
        return;
    Display10MHzReference(value);
    m_sysChan->setTMRF(value);
}

void ZIRVOFSMainWindow::SystemCardsConfiguration_triggered()
{
    if (m_sysChan)
        m_auxiliaryWindows.openCards(m_links->commandLink()->cards());
}

void ZIRVOFSMainWindow::SystemChannelNaming_triggered()
{
    if (m_sysChan)
        m_auxiliaryWindows.openNaming(m_links->commandLink());
}

void ZIRVOFSMainWindow::CombinerZeroTriggerd()
{
    if (m_combiner)
        m_auxiliaryWindows.openCombinerZero([this] { CombinerZeroClosed(); });
}

void ZIRVOFSMainWindow::Tape_triggered()
{
    if (TapeChan *const tape = m_directory.all<TapeChan>().value(0))
        m_auxiliaryWindows.openTape(tape);
}

void ZIRVOFSMainWindow::on_actionTMoIP_triggered()
{
    if (!m_tmoipCardList.isEmpty())
        m_auxiliaryWindows.openTmoip(m_tmoipCardList.front());
}

QList<QAction *> ZIRVOFSMainWindow::eyeActions() const
{
    return { ui->actionDemod1_EyeConst, ui->actionDemod2_EyeConst, ui->actionDemod3_EyeConst };
}

void ZIRVOFSMainWindow::EyeConstWindow_triggered(int position)
{
    if (DmdChan *const demodulator = m_directory.all<DmdChan>().value(position))
        m_auxiliaryWindows.openEyeConst(position, demodulator);
}

void ZIRVOFSMainWindow::btnDmdAdvSett_clicked(int position)
{
    if (DmdChan *const demodulator = m_directory.all<DmdChan>().value(position))
        m_auxiliaryWindows.openAdvancedSettings(position, m_families.hasK3050OrK3060Card, demodulator);
}

void ZIRVOFSMainWindow::About_triggered()
{
    QMessageBox box(QMessageBox::Information, u"ZIRVO Remote Software"_s,
                    u"Name: HURLO ZIRVO Remote Software\rVersion: "_s + QCoreApplication::applicationVersion(),
                    QMessageBox::Ok);
    m_focusReturn.tick();
    box.exec();
    m_focusReturn.start();
}
