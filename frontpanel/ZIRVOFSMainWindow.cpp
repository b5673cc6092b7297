#include "frontpanel/ZIRVOFSMainWindow.h"

#include "channels/CmbrChan.h"
#include "channels/DmdChan.h"
#include "channels/RcvrChan.h"
#include "channels/TapeChan.h"
#include "channels/TmoipCard.h"
#include "channels/UniversalChan.h"
#include "frontpanel/DemodulatorPanel.h"
#include "frontpanel/LinkStatusLine.h"
#include "head/HeadLinks.h"
#include "inventory/CardFamilies.h"
#include "ui_MainWindow.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {

constexpr int kStartupTickMs = 1000;
constexpr int kStatusTickMs = 333;
constexpr int kFinalWriteMs = 1000;

} // namespace

ZIRVOFSMainWindow::ZIRVOFSMainWindow(QWidget *parent)
    : QMainWindow(parent)
    , ui(std::make_unique<Ui::MainWindow>())
    , m_linkStatusLine(new LinkStatusLine(this))
    , m_focusReturn(this)
    , m_menus(*ui)
    , m_system(m_menus, m_focusReturn, this)
    , m_auxiliaryWindows(m_focusReturn, this)
{
    ui->setupUi(this);
    setWindowIcon(QIcon(u":/new/prefix1/ANTENNA.ICO"_s));
    setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::CustomizeWindowHint);
    setLocale(QLocale::c());
    createPanels();
    connectMenus();
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
    // The panels refer to guard and focus return, so they go first; the loss of the focus must not commit a text.
    const ControlGuard::Scope ending(m_guard);
    delete takeCentralWidget();
}

void ZIRVOFSMainWindow::createPanels()
{
    m_panels = std::make_unique<PanelGrid>(PanelContext{ m_guard, m_focusReturn }, ui->panelGrid, ui->panelPage);
    m_focusReturn.setHolder(m_panels->neutralFocusHolder());
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
    const auto eyeActions = m_menus.eyeActions();
    for (int i = 0; i < int(eyeActions.size()); ++i) {
        const auto openEyeConst = [this, i] { EyeConstWindow_triggered(i); };
        connect(eyeActions[i], &QAction::triggered, this, openEyeConst, Qt::QueuedConnection);
        connect(m_panels->demodulators()[i], &DemodulatorPanel::advancedSettingsRequested, this,
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
    // A modal box has closed; without a window manager nothing else returns the keyboard.
    if (event->type() == QEvent::WindowUnblocked)
        activateWindow();
    return QMainWindow::event(event);
}

void ZIRVOFSMainWindow::closeEvent(QCloseEvent *event)
{
    m_focusReturn.tick(); // a half-typed text is not entered
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

/// The box blocks nothing, and closes by itself when the device is there.
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
    showPanels();
    m_links->openFurtherLinks();
    m_updateAllDynamicParamsTmr.start();
}

void ZIRVOFSMainWindow::SetChanList() { m_directory.assign(m_links->commandLink()->channels()); }

void ZIRVOFSMainWindow::showSystem()
{
    UniversalChan *const system = m_directory.all<UniversalChan>().value(0);
    connect(system, &Channel::SettingChanged, this, &ZIRVOFSMainWindow::UpdateSetting, Qt::QueuedConnection);
    m_system.setChannel(system, m_links->commandLink(), m_panels.get(), m_systemIdentifier);
    m_menus.enable(!m_directory.all<CmbrChan>().isEmpty(), !m_directory.all<TapeChan>().isEmpty(),
                   m_directory.all<DmdChan>().size());
}

void ZIRVOFSMainWindow::showPanels()
{
    SerialPortController *const link = m_links->commandLink();
    const CardFamilies families = CardFamilies::of(link->cards());
    m_auxiliaryWindows.setChassis(link, &m_directory, families);
    const auto shown = m_panels->fill(m_directory, families);
    for (const Channel *channel : shown)
        connect(channel, &Channel::SettingChanged, this, &ZIRVOFSMainWindow::UpdateSetting, Qt::QueuedConnection);
    if (!m_directory.all<TapeChan>().isEmpty())
        m_panels->showPlayback();
    if (!m_panels->arrange()) {
        ui->lblStarting->setText(u"The chassis reports no channel to show"_s);
        return;
    }
    ui->pages->setCurrentWidget(ui->panelPage);
    m_focusReturn.giveBack();
}

void ZIRVOFSMainWindow::SpecObtainedAllSettings() { m_links->shareSpectralChannels(); }

void ZIRVOFSMainWindow::SetTmoipCardList(TmoipCard *card)
{
    m_tmoipCardList.append(card);
    m_menus.enableTmoip();
}

// Status

void ZIRVOFSMainWindow::showLinks()
{
    if (!m_system.channel())
        return; // nothing is shown yet
    m_linkStatusLine->setClientPresent(m_system.channel()->getREMOTE() == "1"_L1);
    m_panels->setStale(m_linkStatusLine->trouble());
    m_auxiliaryWindows.setStale(m_linkStatusLine->trouble());
}

void ZIRVOFSMainWindow::UpdateAllDynamicParamsTmr_Tick()
{
    refresh(static_cast<PanelGrid::Kind>(m_dynamicParamsPhase));
    m_dynamicParamsPhase = (m_dynamicParamsPhase + 1) % PanelGrid::KindCount;
}

void ZIRVOFSMainWindow::refresh(PanelGrid::Kind kind)
{
    m_panels->refresh(kind);
    if (kind == PanelGrid::Combiners)
        UpdateCmbZero();
}

// Settings

void ZIRVOFSMainWindow::UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                                      const QString &FailedData)
{
    // After a refused set the channels report the value in force, so that both outcomes are shown alike.
    Q_UNUSED(CmdFailed)
    Q_UNUSED(FailedData)
    if (m_system.channel() && Module == m_system.channel()->address())
        m_system.update(Cmd, Data);
    else
        m_panels->show(Module, Cmd, Data);
}

// Menus

void ZIRVOFSMainWindow::CombinerZeroTriggerd()
{
    m_auxiliaryWindows.openCombinerZero([this] { CombinerZeroClosed(); });
}

void ZIRVOFSMainWindow::on_actionTMoIP_triggered()
{
    if (!m_tmoipCardList.isEmpty())
        m_auxiliaryWindows.openTmoip(m_tmoipCardList.front());
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
