#include "frontpanel/DemodulatorPanel.h"

#include "channels/DemodulationMode.h"
#include "controls/NumberText.h"
#include "controls/ValueText.h"
#include "controls/WheelGuard.h"
#include "ui_DemodulatorPanel.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {

using Commands = DmdChan::Commands;

constexpr int kHeadWidth = 270; // pixels that lamps and marks in the panel's head need

/// Data sources in the order of the box's items.
const QStringList kSources{ u"1"_s, u"2"_s, u"3"_s, u"A"_s, u"B"_s, u"C"_s };

} // namespace

DemodulatorPanel::DemodulatorPanel(int number, const PanelContext &context, QWidget *parent)
    : PanelOf(context, parent)
    , ui(std::make_unique<Ui::DemodulatorPanel>())
    , m_parts(*ui, number)
    , m_status(*ui)
{
    ui->setupUi(this);
    const QString digit = QString::number(number);
    ui->groupBoxDmd->setTitle(ui->groupBoxDmd->title() + digit);
    for (QLabel *label : { ui->lblChanDemod, ui->lblDemod, ui->lblBitSync })
        label->setText(label->text() + u' ' + digit);
    nameChildren(u"dmd"_s + digit, digit);
    for (QWidget *part : std::initializer_list<QWidget *>{ ui->lblChanDemod, ui->lblSlaved, ui->lblAnalogPol,
                                                           ui->cboAnalogPol, ui->checkBoxAutoFMSweep })
        part->hide();
    for (QWidget *row : { ui->frameAnalogA, ui->frameAnalogB }) {
        QSizePolicy policy = row->sizePolicy();
        policy.setRetainSizeWhenHidden(true); // rows of panels side by side stay level
        row->setSizePolicy(policy);
    }
    WheelGuard::protect(this);
    hide();
}

DemodulatorPanel::~DemodulatorPanel() = default;

void DemodulatorPanel::setChannel(DmdChan *channel, const CardFamilies &families)
{
    follow(channel);
    {
        const ControlGuard::Scope filling(guard());
        m_parts.setFamilies(families);
        createOutputs();
        createTable();
        createVideoTable();
        settings().fill();
        updateDynamicParams();
    }
    connectControls();
    setVisible(!families.hasK412WCard);
}

void DemodulatorPanel::createOutputs()
{
    using C = DmdChan;
    const bool isInDecibels = m_parts.families().hasK3050OrK3060Card;
    m_outputA = DemodulatorOutput({ "A"_L1, ui->lineDataRateA, ui->sldrAnalogGainA, ui->lblAnalogGainAVal,
                                    Commands::RATEA, &C::getRATEA, &C::setRATEA, &C::setVGN1 },
                                  channel(), isInDecibels);
    m_outputB = DemodulatorOutput({ "B"_L1, ui->lineDataRateB, ui->sldrAnalogGainB, ui->lblAnalogGainBVal,
                                    Commands::RATEB, &C::getRATEB, &C::setRATEB, &C::setVGN2 },
                                  channel(), isInDecibels);
}

void DemodulatorPanel::createTable()
{
    using C = DmdChan;
    using P = DemodulatorPanel;
    addItems(Commands::DMLS, &C::getDMLS, ui->cboDemodMode, &C::demodModes, Commands::DMOD);
    addChoice(Commands::DMOD, &C::getDMOD, ui->cboDemodMode, &P::cboDMOD_currentIndexChanged,
              [this](const QString &v) { (DisplayDemodMode(v), ShowHideControls()); });
    addChoice(Commands::DSRC, &C::getDSRC, ui->cboInputSource, &P::cboDSRC_currentIndexChanged,
              [this](const QString &v) { DisplayInputSource(v); });
    addChoice(Commands::VCFG, &C::getVCFG, ui->cboOutputMode, &P::cboVCFG_currentIndexChanged,
              [this](const QString &v) { (ui->cboOutputMode->showPosition(v), ShowHideControls()); });
    addChoice(Commands::BSDR, &C::getBSDR, ui->cboDerandomizer, &P::cboBSDR_currentIndexChanged);
    addChoice(Commands::DDQM, &C::getDDQM, ui->cboDQM, &P::cboDDQM_currentIndexChanged);
    addChoice(Commands::ADEQ, &C::getADEQ, ui->cboADEQ, &P::cboADEQ_currentIndexChanged);
    add(Commands::ALBW, &C::getALBW, [this](const QString &v) { DisplayAutoSettings(v, u"LB"_s); });
    add(Commands::ASRG, &C::getASRG, [this](const QString &v) { DisplayAutoSettings(v, u"RG"_s); });
    add(Commands::ASRT, &C::getASRT, [this](const QString &v) { DisplayAutoSettings(v, u"RT"_s); });
    add(Commands::TMID, &C::getTMID, [this](const QString &v) { DisplayAutoSettings(v, u"MI"_s); });
    add(Commands::AFMS, &C::getAFMS, [this](const QString &v) { DisplayAutoSettings(v, u"FM"_s); });
    add(Commands::DVBW, &C::getDVBW, [this](const QString &v) { DisplayVideoBandwidth(v); });
    add(Commands::VGN1, &C::getVGN1, [this](const QString &v) { m_outputA.DisplayVideoGain(v); });
    add(Commands::VGN2, &C::getVGN2, [this](const QString &v) { m_outputB.DisplayVideoGain(v); });
    add(Commands::RATEA, &C::getRATEA, [this](const QString &v) { m_outputA.DisplayDataRate(v); });
    add(Commands::RATEB, &C::getRATEB, [this](const QString &v) { m_outputB.DisplayDataRate(v); });
    addName(ui->groupBoxDmd, kHeadWidth);
}

/// One box stands for two lists of video filters; each kind of card has one of them in use.
void DemodulatorPanel::createVideoTable()
{
    using C = DmdChan;
    using P = DemodulatorPanel;
    const auto chosen = m_parts.choosesVideoFilter() ? &P::cboVFBW_currentIndexChanged : nullptr;
    const bool isFir = m_parts.families().hasK3050OrK3060Card;
    const auto items = isFir ? &C::videoFilters : &C::videoFilterBandwidths;
    const QLatin1StringView position = isFir ? Commands::VFIR : Commands::VFBW;
    addItems(Commands::VFLS, &C::getVFLS, ui->cboVFBW, items, position);
    add(Commands::VFFL, &C::getVFFL, [this, items](const QString &) { ui->cboVFBW->refill((channel()->*items)()); });
    addChoice(position, isFir ? &C::getVFIR : &C::getVFBW, ui->cboVFBW, chosen);
    addChoice(Commands::VIDP, &C::getVIDP, ui->cboAnalogPol,
              m_parts.isPlain() ? &P::cboVIDP_currentIndexChanged : nullptr);
}

void DemodulatorPanel::connectControls()
{
    using P = DemodulatorPanel;
    connect(ui->checkBoxAutoBW, &QCheckBox::released, this, &P::chkboxALBW_released);
    connect(ui->checkBoxAutoSweepRange, &QCheckBox::released, this, &P::chkboxASWRG_released);
    connect(ui->checkBoxAutoStepSize, &QCheckBox::released, this, &P::chkboxASWSS_released);
    connect(ui->checkBoxAutoModIndex, &QCheckBox::released, this, &P::chkboxATMID_released);
    connect(ui->sldrAnalogGainA, &QSlider::valueChanged, this, &P::sldrVGNA_valueChanged);
    connect(ui->sldrAnalogGainB, &QSlider::valueChanged, this, &P::sldrVGNB_valueChanged);
    connect(ui->lineDataRateA, &QLineEdit::returnPressed, this, &P::lineRATEA_returnPressed);
    connect(ui->lineDataRateB, &QLineEdit::returnPressed, this, &P::lineRATEB_returnPressed);
    for (const QLineEdit *line : { ui->lineDataRateA, ui->lineDataRateB })
        connect(line, &QLineEdit::textEdited, &focusReturn(), &FocusReturn::start);
    connect(ui->btnAdvanced, &QPushButton::clicked, this, &P::advancedSettingsRequested);
}

void DemodulatorPanel::restoreEntries()
{
    m_outputA.restore();
    m_outputB.restore();
}

void DemodulatorPanel::showSlaved(bool slaved) { ui->lblSlaved->setVisible(slaved); }

// Handlers

void DemodulatorPanel::cboDMOD_currentIndexChanged(int index)
{
    onOperatorChange([this, index] {
        const auto *const mode = DemodulationMode::withName(ui->cboDemodMode->itemText(index));
        channel()->setDMOD((mode ? *mode : DemodulationMode::fallback()).code);
        if (!channel()->isSetPending(Commands::DMOD))
            DisplayDemodMode(channel()->getDMOD()); // nothing was sent: the mode that stands for the name is in force
    });
}

void DemodulatorPanel::cboDSRC_currentIndexChanged(int index)
{
    onOperatorChange([this, index] {
        if (const QString source = kSources.value(index); !source.isEmpty())
            channel()->setDSRC(source);
    });
}

void DemodulatorPanel::cboVFBW_currentIndexChanged(int index)
{
    choose(m_parts.families().hasK3050OrK3060Card ? &DmdChan::setVFIR : &DmdChan::setVFBW, index);
}

void DemodulatorPanel::chkboxALBW_released() { choose(&DmdChan::setALBW, ui->checkBoxAutoBW->isChecked()); }

void DemodulatorPanel::chkboxASWRG_released() { choose(&DmdChan::setASRG, ui->checkBoxAutoSweepRange->isChecked()); }

void DemodulatorPanel::chkboxASWSS_released() { choose(&DmdChan::setASRT, ui->checkBoxAutoStepSize->isChecked()); }

void DemodulatorPanel::chkboxATMID_released()
{
    onOperatorChange([this] { channel()->setTMID(ui->checkBoxAutoModIndex->isChecked() ? u"0"_s : u"0.35"_s); });
}

void DemodulatorPanel::changeGain(const DemodulatorOutput &output, int value)
{
    onOperatorChange([&output, value] { output.chooseGain(value); });
}

void DemodulatorPanel::enterRate(const DemodulatorOutput &output)
{
    const auto rate = output.enteredRate();
    if (rate && CheckValidDataRanges(output.letter(), *rate))
        output.takeRate(*rate);
    else
        output.refuseRate();
    focusReturn().stop();
    focusReturn().tick(); // half-typed texts elsewhere are given up as well
}

bool DemodulatorPanel::CheckValidDataRanges(const QString &letter, double rate)
{
    const auto *const mode = DemodulationMode::withCode(channel()->getDMOD());
    if (!mode)
        return false;
    if (mode->takes(rate))
        return true;
    QMessageBox(QMessageBox::Warning, u"Data Rate "_s + letter, mode->rangeText, QMessageBox::Ok, window()).exec();
    return false;
}

// Display of settings

void DemodulatorPanel::DisplayDemodMode(const QString &code)
{
    const auto *const mode = DemodulationMode::withCode(code);
    if (!mode && !ValueText::isKnown(code)) {
        ui->cboDemodMode->showItem(-1, code);
        return;
    }
    const QLatin1StringView name = (mode ? *mode : DemodulationMode::fallback()).name;
    ui->cboDemodMode->showItem(ui->cboDemodMode->findText(name), name);
    if (!mode)
        ui->cboDemodMode->showInstead(code); // the card's mode is not in the list
}

void DemodulatorPanel::DisplayInputSource(const QString &value)
{
    const auto source = kSources.indexOf(value);
    ui->cboInputSource->showItem(source >= 0 ? source : qint64(value.toInt()) - 1, value);
}

void DemodulatorPanel::DisplayAutoSettings(const QString &value, const QString &key)
{
    if (key == "LB"_L1)
        ui->checkBoxAutoBW->showValue(value);
    else if (key == "RG"_L1)
        ui->checkBoxAutoSweepRange->showValue(value);
    else if (key == "RT"_L1)
        ui->checkBoxAutoStepSize->showValue(value);
    else if (key == "MI"_L1) // any known index but 0.00 is a manual one
        ui->checkBoxAutoModIndex->showValue(value, value == "0.00"_L1, ValueText::isKnown(value));
    else if (key == "FM"_L1 || key == "PCM-FM"_L1)
        ui->checkBoxAutoFMSweep->showValue(value);
}

void DemodulatorPanel::DisplayVideoBandwidth(const QString &value)
{
    const QString text = ValueText::shown(NumberText::bandwidth(value));
    WidgetUpdate::text(ui->lblAnalogBWAVal, text);
    WidgetUpdate::text(ui->lblAnalogBWBVal, text);
}
