#include "dialogs/demodulator/DmdCtrlWindow.h"

#include "channels/DemodulationMode.h"
#include "controls/ChoiceBox.h"
#include "controls/OnOff.h"
#include "controls/ValueText.h"
#include "controls/WheelGuard.h"
#include "controls/WidgetUpdate.h"
#include "dialogs/RefusalBox.h"
#include "dialogs/demodulator/DmdChoice.h"
#include "dialogs/demodulator/DmdNumber.h"
#include "ui_DmdCtrlWindow.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Commands = DmdChan::Commands;

constexpr int kHasClockPhase = 1; // bit of the variant
constexpr int kBesideTitle = 160; // pixels that the rest of the window's head needs

const QStringList kModeSettings{ Commands::DMOD, Commands::VCFG, Commands::ALBW,
                                 Commands::ASRG, Commands::ASRT, Commands::TMID };

QString versionText(const QString &version)
{
    return ValueText::isKnown(version) ? u'v' + version : ValueText::shown(version);
}

} // namespace

DmdCtrlWindow::DmdCtrlWindow(int variant, QWidget *parent, DmdChan *channel, bool *open)
    : EntryDialog(parent)
    , ui(std::make_unique<Ui::DmdCtrlWindow>())
    , m_channel(channel)
    , m_open(open)
    , m_focusReturn(this, FocusReturn::Repeat::UntilStopped)
{
    ui->setupUi(this);
    WidgetUpdate::windowTitle(
        this, u"(DMD.%1) Advanced Demod Settings (%2)"_s.arg(channel->getChannel(), channel->getNAME()));
    *m_open = true;
    chooseLayout(variant & kHasClockPhase);
    createTable();
    m_settings.fill();
    showVersions();
    ShowHideControls();
    connectControls();
    WheelGuard::protect(this);
    m_focusReturn.setHolder(ui->lblFocusdmd);
    m_focusReturn.giveBack();
}

DmdCtrlWindow::~DmdCtrlWindow() { *m_open = false; }

/// Cards with clock phase have one analog filter to choose in place of a low pass, de-emphasis and coupling of their
/// own.
void DmdCtrlWindow::chooseLayout(bool hasClockPhase)
{
    ui->cboClkPoldmd->setHidden(hasClockPhase);
    ui->cboClkPhasedmd->setHidden(!hasClockPhase);
    if (hasClockPhase) {
        ui->lblClkPoldmd->setText(u"Clock Phase"_s);
        ui->lblClkPoldmd->setBuddy(ui->cboClkPhasedmd);
    }
    for (QFrame *const frame : { ui->frame5dmd_3, ui->frame6dmd, ui->frame8dmd })
        frame->setHidden(hasClockPhase);
    ui->frameAnalogFilter->setHidden(!hasClockPhase);
}

void DmdCtrlWindow::createTable()
{
    m_settings.add(Commands::IFFL, m_channel, &DmdChan::getIFFL,
                   [this](const QString &) { ui->cboFIRFilterBWdmd->refill(m_channel->ifFilters()); });
    for (const auto &[box, mnemonic] : {
             std::pair(ui->cboDataPoldmd, Commands::BSDP),       std::pair(ui->cboClkPoldmd, Commands::BSCP),
             std::pair(ui->cboClkPhasedmd, Commands::BSCL),      std::pair(ui->cboAnalogPoldmd, Commands::VIDP),
             std::pair(ui->cboInterleavingdmd, Commands::BSIL),  std::pair(ui->cboLoopBWDivdmd, Commands::TRKD),
             std::pair(ui->cboFMSweepdmd, Commands::DAFC),       std::pair(ui->cboCouplingdmd, Commands::VCP1),
             std::pair(ui->cboDeEmphasisdmd, Commands::VDE1),    std::pair(ui->cboFIRFilterBWdmd, Commands::DFIR),
             std::pair(ui->cboFastAquiredmd, Commands::DFAQ),    std::pair(ui->cboVideo0dmd, Commands::CPT0),
             std::pair(ui->cboVideo1dmd, Commands::CPT1),        std::pair(ui->cboVideo2dmd, Commands::CPT2),
             std::pair(ui->cboVideo3dmd, Commands::CPT3),        std::pair(ui->cboVideo4dmd, Commands::CPT4),
             std::pair(ui->cboVideo5dmd, Commands::CPT5),        std::pair(ui->cboVideo6dmd, Commands::CPT6),
             std::pair(ui->cboVideo7dmd, Commands::CPT7),        std::pair(ui->cboInputCodedmd, Commands::BSIC),
             std::pair(ui->cboLowPassFilterdmd, Commands::VLPF), std::pair(ui->cboAnalogFilter, Commands::VAFL),
         })
        add(box, mnemonic);
    for (const auto &[line, mnemonic] : {
             std::pair(ui->lineBitSyncLoopBWdmd, Commands::LBWB),
             std::pair(ui->lineCarrierLoopBWdmd, Commands::LBWC),
             std::pair(ui->lineSweepRangedmd, Commands::SWRG),
             std::pair(ui->lineStepSizedmd, Commands::SWRT),
             std::pair(ui->lineModIndexdmd, Commands::TMID),
             std::pair(ui->lineDQMFrameSizedmd, Commands::DFSZ),
             std::pair(ui->lineDQMFrameWorddmd, Commands::DFWD),
             std::pair(ui->lineDQMManualMeandmd, Commands::MEAN),
             std::pair(ui->lineDQMBEPOffsetdmd, Commands::BEPO),
         })
        add(line, mnemonic);
}

void DmdCtrlWindow::add(ChoiceBox *box, QLatin1StringView mnemonic)
{
    const DmdChoice &choice = DmdChoice::of(mnemonic);
    m_controls.insert(mnemonic, box);
    m_settings.add(mnemonic, m_channel, choice.get,
                   [box, &choice](const QString &value) { box->showItem(choice.positionOf(value), value); });
    connect(box, &QComboBox::currentIndexChanged, this,
            [this, &choice](int index) { choice.choose(*m_channel, index); });
    connect(box, &ChoiceBox::refilled, this, [this, mnemonic] {
        if (!m_channel->isSetPending(mnemonic))
            m_settings.showInForce(mnemonic);
    });
}

void DmdCtrlWindow::add(ValueEdit *line, QLatin1StringView mnemonic)
{
    const DmdNumber &number = DmdNumber::of(mnemonic);
    const EntryField field = EntryField::of(line, m_channel, mnemonic, number.get,
                                            [&number](const QString &value) { return number.shown(value); });
    m_controls.insert(mnemonic, line);
    m_entries.append(field);
    m_settings.add(mnemonic, m_channel, number.get, [field](const QString &value) { field.show(value); });
    connect(line, &QLineEdit::returnPressed, this, [this, field, &number] { enter(field, number); });
    connect(line, &QLineEdit::textEdited, &m_focusReturn, &FocusReturn::start);
}

void DmdCtrlWindow::showVersions()
{
    ui->lblFPGA1valdmd->setText(versionText(m_channel->getFGA1()));
    ui->lblFPGA2valdmd->setText(versionText(m_channel->getFGA2()));
    ui->lblMPUvaldmd->setText(versionText(m_channel->getMPUV()));
}

void DmdCtrlWindow::connectControls()
{
    connect(ui->btnClosedmd, &QPushButton::clicked, this, &QWidget::close);
    connect(&m_focusReturn, &FocusReturn::restoreDue, this, [this] {
        for (const EntryField &field : std::as_const(m_entries))
            field.giveUp();
    });
    connect(m_channel, &Channel::SettingChanged, this, &DmdCtrlWindow::UpdateSetting, Qt::QueuedConnection);
}

void DmdCtrlWindow::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    showTitle();
}

/// Repeats the title, which a head without a window manager does not draw. A long name is cut.
void DmdCtrlWindow::showTitle()
{
    const QFontMetrics metrics = ui->lblFocusdmd->fontMetrics();
    ui->lblFocusdmd->setText(
        metrics.elidedText(WidgetUpdate::plainTitle(this), Qt::ElideRight, width() - kBesideTitle));
}

// Entries

void DmdCtrlWindow::enter(const EntryField &field, const DmdNumber &number)
{
    m_focusReturn.stop();
    bool isRefused = false;
    if (field.differs()) { // Return on an untouched value must not send it: the text may be rounded
        const double value = number.parse(field.text());
        isRefused = !CheckValidDataRanges(number.name, value);
        if (!isRefused)
            (m_channel->*number.set)(number.toWire(value));
    }
    field.end(isRefused);
    m_focusReturn.tick(); // half-typed texts elsewhere are given up as well
}

bool DmdCtrlWindow::CheckValidDataRanges(const QString &name, double value)
{
    for (const DmdNumber &number : DmdNumber::all()) {
        if (name != number.name)
            continue;
        if (number.accepts(value))
            return true;
        RefusalBox::open(QMessageBox::Warning, name, number.message, this);
    }
    return false;
}

// Reports

void DmdCtrlWindow::UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                                  const QString &FailedData)
{
    Q_UNUSED(Module)
    Q_UNUSED(CmdFailed)
    Q_UNUSED(FailedData)
    if (m_channel->isSetPending(Cmd))
        return;
    m_settings.show(Cmd, Data);
    if (kModeSettings.contains(Cmd))
        ShowHideControls();
    if (Cmd == Commands::ASRG)
        followSweepRangeMode(Data);
}

void DmdCtrlWindow::followSweepRangeMode(const QString &ASRG)
{
    if (isOn(ASRG))
        emptySweepRange();
    else if (isOff(ASRG) && !m_channel->isSetPending(Commands::SWRG))
        m_settings.showInForce(Commands::SWRG);
}

void DmdCtrlWindow::emptySweepRange()
{
    ui->lineSweepRangedmd->setText({}); // clear() would count as typed
}

void DmdCtrlWindow::ShowHideControls()
{
    const QStringList locked = DemodulationMode::lockedSettings(*m_channel);
    for (auto control = m_controls.cbegin(); control != m_controls.cend(); ++control)
        setUsable(control.value(), !locked.contains(control.key()));
    for (QLabel *label : findChildren<QLabel *>()) {
        if (const QWidget *const control = label->buddy())
            label->setEnabled(control->isEnabled());
    }
    if (DemodulationMode::hasAutomaticSweepRange(*m_channel))
        emptySweepRange();
}

void DmdCtrlWindow::setUsable(QWidget *control, bool usable)
{
    if (!usable && focusWidget() == control)
        m_focusReturn.giveBack(); // else the next control would take it
    control->setEnabled(usable);
}
