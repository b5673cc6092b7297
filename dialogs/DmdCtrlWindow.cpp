#include "dialogs/DmdCtrlWindow.h"

#include "controls/ChoiceBox.h"
#include "controls/NumberText.h"
#include "controls/OnOff.h"
#include "controls/ValueText.h"
#include "controls/WheelGuard.h"
#include "controls/WidgetUpdate.h"
#include "dialogs/DmdNumber.h"
#include "dialogs/RefusalBox.h"
#include "ui_DmdCtrlWindow.h"

#include <QHash>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Commands = DmdChan::Commands;

constexpr int kHasClockPhase = 1; // bit of the variant
constexpr int kBesideTitle = 160; // pixels that the rest of the window's head needs

/// Sources of a video output in the order of its list.
constexpr std::array kVideoSources{ 0, 1, 2, 3, 6, 7 };
constexpr int kFirstMovedSource = 6;
constexpr int kSourceGap = 2;

const QStringList kModeSettings{ Commands::DMOD, Commands::VCFG, Commands::ALBW,
                                 Commands::ASRG, Commands::ASRT, Commands::TMID };
const QStringList kAutomaticModes{ u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s, u"7"_s, u"8"_s, u"10"_s, u"13"_s, u"17"_s };

/// What an output configuration has no use for.
const QHash<QString, QStringList> kLockedByOutput{
    { u"0"_s, { Commands::BSDP, Commands::BSCP } },
    { u"1"_s, { Commands::VIDP, Commands::VCP1, Commands::VDE1 } },
};
/// What a mode has no use for.
const QHash<QString, QStringList> kLockedByMode{
    { u"0"_s, { Commands::LBWC, Commands::SWRG, Commands::SWRT, Commands::BSIL, Commands::TMID, Commands::TRKD } },
    { u"1"_s, { Commands::LBWB, Commands::LBWC, Commands::SWRG, Commands::SWRT, Commands::BSIL, Commands::DAFC } },
    { u"9"_s,
      { Commands::LBWB, Commands::LBWC, Commands::SWRG, Commands::SWRT, Commands::BSIL, Commands::DFAQ,
        Commands::DAFC } },
};

/// The text that an entry shows for the card's value: itself if it is no such number.
QString textOf(const DmdNumber &number, const QString &value)
{
    const QString text = number.toText(value);
    return text.isEmpty() ? ValueText::shown(value) : text;
}

QString versionText(const QString &version)
{
    return ValueText::isKnown(version) ? u'v' + version : ValueText::shown(version);
}

/// The card itself writes it with two decimals.
bool isAutomaticModIndex(const QString &TMID) { return NumberText::parse(TMID) == 0.0; }

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
    createTables();
    chooseLayout(variant & kHasClockPhase);
    fill();
    ShowHideControls();
    connectControls();
    WheelGuard::protect(this);
    m_focusReturn.setHolder(ui->lblFocusdmd);
    m_focusReturn.giveBack();
}

DmdCtrlWindow::~DmdCtrlWindow() { *m_open = false; }

void DmdCtrlWindow::createTables()
{
    using D = DmdChan;
    m_choices = {
        { ui->lblDataPoldmd, ui->cboDataPoldmd, Commands::BSDP, &D::getBSDP, &D::setBSDP },
        { ui->lblClkPoldmd, ui->cboClkPoldmd, Commands::BSCP, &D::getBSCP, &D::setBSCP },
        { ui->lblClkPoldmd, ui->cboClkPhasedmd, Commands::BSCL, &D::getBSCL, &D::setBSCL },
        { ui->lblAnalogPoldmd, ui->cboAnalogPoldmd, Commands::VIDP, &D::getVIDP, &D::setVIDP },
        { ui->lblInterleavingdmd, ui->cboInterleavingdmd, Commands::BSIL, &D::getBSIL, &D::setBSIL },
        { ui->lblLoopBWDivdmd, ui->cboLoopBWDivdmd, Commands::TRKD, &D::getTRKD, &D::setTRKD },
        { ui->lblFMSweepdmd, ui->cboFMSweepdmd, Commands::DAFC, &D::getDAFC, &D::setDAFC },
        { ui->lblCouplingdmd, ui->cboCouplingdmd, Commands::VCP1, &D::getVCP1, &D::setVCP1, Form::Position,
          &D::setVCP2 },
        { ui->lblDeEmphasisdmd, ui->cboDeEmphasisdmd, Commands::VDE1, &D::getVDE1, &D::setVDE1, Form::Position,
          &D::setVDE2 },
        { ui->lblFIRFilterBWdmd, ui->cboFIRFilterBWdmd, Commands::DFIR, &D::getDFIR, &D::setDFIR,
          Form::PositionLessOne },
        { ui->lblFastAquiredmd, ui->cboFastAquiredmd, Commands::DFAQ, &D::getDFAQ, &D::setDFAQ },
        { ui->lblVideo0dmd, ui->cboVideo0dmd, Commands::CPT0, &D::getCPT0, &D::setCPT0, Form::VideoSource },
        { ui->lblVideo1dmd, ui->cboVideo1dmd, Commands::CPT1, &D::getCPT1, &D::setCPT1, Form::VideoSource },
        { ui->lblVideo2dmd, ui->cboVideo2dmd, Commands::CPT2, &D::getCPT2, &D::setCPT2, Form::VideoSource },
        { ui->lblVideo3dmd, ui->cboVideo3dmd, Commands::CPT3, &D::getCPT3, &D::setCPT3, Form::VideoSource },
        { ui->lblVideo4dmd, ui->cboVideo4dmd, Commands::CPT4, &D::getCPT4, &D::setCPT4, Form::VideoSource },
        { ui->lblVideo5dmd, ui->cboVideo5dmd, Commands::CPT5, &D::getCPT5, &D::setCPT5, Form::VideoSource },
        { ui->lblVideo6dmd, ui->cboVideo6dmd, Commands::CPT6, &D::getCPT6, &D::setCPT6, Form::VideoSource },
        { ui->lblVideo7dmd, ui->cboVideo7dmd, Commands::CPT7, &D::getCPT7, &D::setCPT7, Form::VideoSource },
        { ui->lblInputCodedmd, ui->cboInputCodedmd, Commands::BSIC, &D::getBSIC, &D::setBSIC },
        { ui->lblLowPassFilterdmd, ui->cboLowPassFilterdmd, Commands::VLPF, &D::getVLPF, &D::setVLPF },
        { ui->lblAnalogFilter, ui->cboAnalogFilter, Commands::VAFL, &D::getVAFL, &D::setVAFL },
    };
    m_entries = {
        { ui->lblBitSyncLoopBWdmd, ui->lineBitSyncLoopBWdmd, &DmdNumber::of(Commands::LBWB) },
        { ui->lblCarrierLoopBWdmd, ui->lineCarrierLoopBWdmd, &DmdNumber::of(Commands::LBWC) },
        { ui->lblSweepRangedmd, ui->lineSweepRangedmd, &DmdNumber::of(Commands::SWRG) },
        { ui->lblStepSizedmd, ui->lineStepSizedmd, &DmdNumber::of(Commands::SWRT) },
        { ui->lblModIndexdmd, ui->lineModIndexdmd, &DmdNumber::of(Commands::TMID) },
        { ui->lblDQMFrameSizedmd, ui->lineDQMFrameSizedmd, &DmdNumber::of(Commands::DFSZ) },
        { ui->lblDQMFrameWorddmd, ui->lineDQMFrameWorddmd, &DmdNumber::of(Commands::DFWD) },
        { ui->lblDQMManualMeandmd, ui->lineDQMManualMeandmd, &DmdNumber::of(Commands::MEAN) },
        { ui->lblDQMBEPOffsetdmd, ui->lineDQMBEPOffsetdmd, &DmdNumber::of(Commands::BEPO) },
    };
}

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

void DmdCtrlWindow::fill()
{
    ui->cboFIRFilterBWdmd->refill(m_channel->ifFilters());
    for (const Choice &choice : std::as_const(m_choices))
        display(choice, (m_channel->*choice.get)());
    for (const Entry &entry : std::as_const(m_entries))
        showInForce(entry);
    ui->lblFPGA1valdmd->setText(versionText(m_channel->getFGA1()));
    ui->lblFPGA2valdmd->setText(versionText(m_channel->getFGA2()));
    ui->lblMPUvaldmd->setText(versionText(m_channel->getMPUV()));
}

void DmdCtrlWindow::connectControls()
{
    for (const Choice &choice : std::as_const(m_choices)) {
        connect(choice.box, &QComboBox::currentIndexChanged, this,
                [this, choice](int index) { choose(choice, index); });
        connect(choice.box, &ChoiceBox::refilled, this, [this, choice] {
            if (!m_channel->isSetPending(choice.mnemonic))
                display(choice, (m_channel->*choice.get)());
        });
    }
    for (const Entry &entry : std::as_const(m_entries)) {
        connect(entry.line, &QLineEdit::returnPressed, this, [this, entry] { enter(entry); });
        connect(entry.line, &QLineEdit::textEdited, &m_focusReturn, &FocusReturn::start);
    }
    connect(ui->btnClosedmd, &QPushButton::clicked, this, &QWidget::close);
    connect(&m_focusReturn, &FocusReturn::restoreDue, this, &DmdCtrlWindow::restoreEntries);
    connect(m_channel, &Channel::SettingChanged, this, &DmdCtrlWindow::UpdateSetting, Qt::QueuedConnection);
}

void DmdCtrlWindow::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    showTitle();
}

/// Repeats the title, for a head without window manager draws none. A name may be longer than there is room for.
void DmdCtrlWindow::showTitle()
{
    const QFontMetrics metrics = ui->lblFocusdmd->fontMetrics();
    ui->lblFocusdmd->setText(
        metrics.elidedText(WidgetUpdate::plainTitle(this), Qt::ElideRight, width() - kBesideTitle));
}

// What the operator does

void DmdCtrlWindow::choose(const Choice &choice, int index)
{
    const QString value = valueAt(choice.form, index);
    (m_channel->*choice.set)(value);
    if (choice.setToo)
        (m_channel->*choice.setToo)(value);
}

void DmdCtrlWindow::enter(const Entry &entry)
{
    m_focusReturn.stop();
    const DmdNumber &number = *entry.number;
    const QString text = entry.line->text();
    // Return on what is shown must not send it: it may be rounded.
    const bool isTouched = entry.line->isModified() || text != textOf(number, (m_channel->*number.get)());
    const double value = number.parse(text);
    bool isRefused = false;
    if (isTouched) {
        isRefused = !CheckValidDataRanges(number.name, value);
        if (!isRefused)
            (m_channel->*number.set)(number.toWire(value));
    }
    entry.line->setModified(false);
    if (isRefused || !m_channel->isSetPending(number.mnemonic))
        showInForce(entry);
    m_focusReturn.tick(); // what stands half-typed elsewhere is given up as well
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

void DmdCtrlWindow::restoreEntries()
{
    for (const Entry &entry : std::as_const(m_entries)) {
        if (entry.line->isModified()) {
            entry.line->setModified(false);
            showInForce(entry);
        }
    }
}

// What the card confirms

void DmdCtrlWindow::UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                                  const QString &FailedData)
{
    Q_UNUSED(Module)
    Q_UNUSED(CmdFailed)
    Q_UNUSED(FailedData)
    if (m_channel->isSetPending(Cmd))
        return;
    for (const Choice &choice : std::as_const(m_choices)) {
        if (Cmd == choice.mnemonic)
            display(choice, Data);
    }
    for (const Entry &entry : std::as_const(m_entries)) {
        if (Cmd == entry.number->mnemonic)
            display(entry, Data);
    }
    if (Cmd == Commands::IFFL)
        ui->cboFIRFilterBWdmd->refill(m_channel->ifFilters());
    if (kModeSettings.contains(Cmd))
        ShowHideControls();
    if (Cmd == Commands::ASRG)
        followSweepRangeMode(Data);
}

void DmdCtrlWindow::display(const Choice &choice, const QString &value)
{
    choice.box->showItem(positionOf(choice.form, value), value);
}

void DmdCtrlWindow::display(const Entry &entry, const QString &value)
{
    entry.line->showText(textOf(*entry.number, value));
}

void DmdCtrlWindow::showInForce(const Entry &entry) { display(entry, (m_channel->*entry.number->get)()); }

void DmdCtrlWindow::followSweepRangeMode(const QString &ASRG)
{
    if (isOn(ASRG))
        emptySweepRange();
    else if (isOff(ASRG) && !m_channel->isSetPending(Commands::SWRG))
        showInForce({ ui->lblSweepRangedmd, ui->lineSweepRangedmd, &DmdNumber::of(Commands::SWRG) });
}

QString DmdCtrlWindow::valueAt(Form form, int index)
{
    if (form == Form::VideoSource)
        return QString::number(kVideoSources.at(std::size_t(index)));
    return QString::number(form == Form::PositionLessOne ? index - 1 : index);
}

/// -1 for a text that is no position.
qint64 DmdCtrlWindow::positionOf(Form form, const QString &value)
{
    const auto position = NumberText::parseWhole(value);
    if (!position)
        return -1;
    if (form == Form::PositionLessOne)
        return qint64(*position) + 1;
    return form == Form::VideoSource && *position >= kFirstMovedSource ? *position - kSourceGap : *position;
}

// What applies at present

QStringList DmdCtrlWindow::lockedSettings() const
{
    const QString mode = m_channel->getDMOD();
    const bool isAutomaticMode = kAutomaticModes.contains(mode);
    const bool isAutomaticBandwidth = isOn(m_channel->getALBW());
    QStringList locked = kLockedByOutput.value(m_channel->getVCFG()) + kLockedByMode.value(mode);
    if (mode == "0"_L1 && isAutomaticBandwidth)
        locked += Commands::LBWB;
    if (mode == "1"_L1 && !isAutomaticModIndex(m_channel->getTMID()))
        locked += Commands::TRKD;
    if (isAutomaticMode && isAutomaticBandwidth)
        locked += { Commands::LBWB, Commands::LBWC, Commands::TRKD };
    if (isAutomaticMode && isOn(m_channel->getASRG()))
        locked += Commands::SWRG;
    if (isAutomaticMode && isOn(m_channel->getASRT()))
        locked += Commands::SWRT;
    return locked;
}

void DmdCtrlWindow::ShowHideControls()
{
    const QStringList locked = lockedSettings();
    for (const Choice &choice : std::as_const(m_choices))
        setUsable(choice.label, choice.box, !locked.contains(choice.mnemonic));
    for (const Entry &entry : std::as_const(m_entries))
        setUsable(entry.label, entry.line, !locked.contains(entry.number->mnemonic));
    ui->lblClkPoldmd->setEnabled(ui->lblClkPoldmd->buddy()->isEnabled()); // stands for one of two settings
    if (kAutomaticModes.contains(m_channel->getDMOD()) && isOn(m_channel->getASRG()))
        emptySweepRange();
}

void DmdCtrlWindow::emptySweepRange()
{
    ui->lineSweepRangedmd->setText({}); // clear() would count as typed
}

void DmdCtrlWindow::setUsable(QWidget *label, QWidget *control, bool usable)
{
    if (!usable && focusWidget() == control)
        m_focusReturn.giveBack(); // else the next control would take it
    label->setEnabled(usable);
    control->setEnabled(usable);
}
