#include "frontpanel/DemodulatorPanel.h"

#include "channels/DmdChan.h"
#include "controls/NumberText.h"
#include "controls/OnOff.h"
#include "controls/ValueText.h"
#include "controls/WheelGuard.h"
#include "controls/WidgetUpdate.h"
#include "frontpanel/DemodMode.h"
#include "ui_DemodulatorPanel.h"

#include <QHash>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {

using Commands = DmdChan::Commands;

constexpr int kHeadWidth = 270; // pixels that lamps and marks in the panel's head need
constexpr int kFullGain = 255;
constexpr int kNumberWithoutOffset = 3; // the third panel never shows its frequency offset

/// Data sources in the order of the box's items.
const QStringList kSources{ u"1"_s, u"2"_s, u"3"_s, u"A"_s, u"B"_s, u"C"_s };

/// A number in a larger unit; a text that is none as it is.
QString scaledDown(const QString &value, double unit, int decimals)
{
    const auto number = NumberText::parse(value);
    return number ? NumberText::fixed(*number / unit, decimals) : value;
}

} // namespace

DemodulatorPanel::DemodulatorPanel(int number, const PanelContext &context, QWidget *parent)
    : ChannelPanel(context, parent)
    , ui(std::make_unique<Ui::DemodulatorPanel>())
    , m_number(number)
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
    m_channel = channel;
    m_families = families;
    follow(channel);
    {
        const ControlGuard::Scope filling(guard());
        showParts();
        fill();
        ShowHideControls();
    }
    connectControls();
    setVisible(!families.hasK412WCard);
}

/// The parts that the chassis' cards have.
void DemodulatorPanel::showParts()
{
    const bool choosesFilter = !m_families.hasQLN424Card || m_families.hasK3050OrK3060Card;
    const bool isPlain = !m_families.hasQLN424Card && !m_families.hasK3050OrK3060Card;
    const bool showsFilter = choosesFilter && !(isPlain && m_families.hasK412WCard);
    ui->lblVFBW->setVisible(showsFilter);
    ui->cboVFBW->setVisible(showsFilter);
    ui->lblAnalogBWA->setVisible(!choosesFilter);
    ui->lblAnalogBWAVal->setVisible(!choosesFilter);
    ui->lblAnalogPol->setVisible(isPlain && showsFilter);
    ui->cboAnalogPol->setVisible(isPlain && showsFilter);
    if (!isPlain)
        return;
    for (QWidget *part : std::initializer_list<QWidget *>{
             ui->lblInputSource, ui->cboInputSource, ui->lblOutputMode, ui->cboOutputMode, ui->frameAutoSettings,
             ui->lblDQM, ui->cboDQM, ui->lblAE, ui->cboADEQ, ui->btnAdvanced, ui->lblAnalogALevel,
             ui->lblAnalogAVoltage, ui->lblDataRateA, ui->lineDataRateA, ui->lblDerandomizer, ui->cboDerandomizer,
             ui->lblBitSync, ui->frameOffsetPeak })
        part->hide();
}

void DemodulatorPanel::fill()
{
    refillVideoFilters();
    showVideoFilter();
    ui->cboAnalogPol->showPosition(m_channel->getVIDP());
    ui->cboDemodMode->refill(m_channel->demodModes());
    DisplayDemodMode(m_channel->getDMOD());
    DisplayInputSource(m_channel->getDSRC());
    ui->cboOutputMode->showPosition(m_channel->getVCFG());
    ui->cboDerandomizer->showPosition(m_channel->getBSDR());
    DisplayAutoSettings(m_channel->getALBW(), u"LB"_s);
    DisplayAutoSettings(m_channel->getASRG(), u"RG"_s);
    DisplayAutoSettings(m_channel->getASRT(), u"RT"_s);
    DisplayAutoSettings(m_channel->getTMID(), u"MI"_s);
    DisplayVideoGain(outputA(), m_channel->getVGN1());
    DisplayVideoGain(outputB(), m_channel->getVGN2());
    DisplayVideoBandwidth(m_channel->getDVBW());
    DisplayDataRate(outputA(), m_channel->getRATEA());
    DisplayDataRate(outputB(), m_channel->getRATEB());
    showName(ui->groupBoxDmd, m_channel->getNAME(), kHeadWidth);
    ui->cboDQM->showPosition(m_channel->getDDQM());
    ui->cboADEQ->showPosition(m_channel->getADEQ());
    updateDynamicParams();
}

void DemodulatorPanel::connectControls()
{
    const auto onIndex = [this](QComboBox *box, void (DemodulatorPanel::*handler)(int)) {
        connect(box, &QComboBox::currentIndexChanged, this, handler);
    };
    if (!m_families.hasQLN424Card || m_families.hasK3050OrK3060Card)
        onIndex(ui->cboVFBW, &DemodulatorPanel::cboVFBW_currentIndexChanged);
    if (!m_families.hasQLN424Card && !m_families.hasK3050OrK3060Card)
        onIndex(ui->cboAnalogPol, &DemodulatorPanel::cboVIDP_currentIndexChanged);
    onIndex(ui->cboDemodMode, &DemodulatorPanel::cboDMOD_currentIndexChanged);
    onIndex(ui->cboInputSource, &DemodulatorPanel::cboDSRC_currentIndexChanged);
    onIndex(ui->cboOutputMode, &DemodulatorPanel::cboVCFG_currentIndexChanged);
    onIndex(ui->cboDerandomizer, &DemodulatorPanel::cboBSDR_currentIndexChanged);
    onIndex(ui->cboDQM, &DemodulatorPanel::cboDDQM_currentIndexChanged);
    onIndex(ui->cboADEQ, &DemodulatorPanel::cboADEQ_currentIndexChanged);
    onRefilled(ui->cboVFBW, videoFilterMnemonic(), [this] { showVideoFilter(); });
    onRefilled(ui->cboDemodMode, Commands::DMOD, [this] { DisplayDemodMode(m_channel->getDMOD()); });

    const auto onReleased = [this](QCheckBox *box, void (DemodulatorPanel::*handler)()) {
        connect(box, &QCheckBox::released, this, handler);
    };
    onReleased(ui->checkBoxAutoBW, &DemodulatorPanel::chkboxALBW_released);
    onReleased(ui->checkBoxAutoSweepRange, &DemodulatorPanel::chkboxASWRG_released);
    onReleased(ui->checkBoxAutoStepSize, &DemodulatorPanel::chkboxASWSS_released);
    onReleased(ui->checkBoxAutoModIndex, &DemodulatorPanel::chkboxATMID_released);

    connect(ui->sldrAnalogGainA, &QSlider::valueChanged, this, &DemodulatorPanel::sldrVGNA_valueChanged);
    connect(ui->sldrAnalogGainB, &QSlider::valueChanged, this, &DemodulatorPanel::sldrVGNB_valueChanged);
    connect(ui->lineDataRateA, &QLineEdit::returnPressed, this, &DemodulatorPanel::lineRATEA_returnPressed);
    connect(ui->lineDataRateB, &QLineEdit::returnPressed, this, &DemodulatorPanel::lineRATEB_returnPressed);
    for (const QLineEdit *line : { ui->lineDataRateA, ui->lineDataRateB })
        connect(line, &QLineEdit::textEdited, &focusReturn(), &FocusReturn::start);
    connect(ui->btnAdvanced, &QPushButton::clicked, this, &DemodulatorPanel::advancedSettingsRequested);
}

void DemodulatorPanel::showSetting(const QString &Cmd, const QString &Data)
{
    using Show = void (*)(DemodulatorPanel &, const QString &);
    using P = DemodulatorPanel;
    static const QHash<QString, Show> routes{
        { Commands::DMOD, [](P &p, const QString &v) { p.DisplayDemodMode(v), p.ShowHideControls(); } },
        { Commands::VCFG, [](P &p, const QString &v) { p.ui->cboOutputMode->showPosition(v), p.ShowHideControls(); } },
        { Commands::VFBW, [](P &p, const QString &v) { p.DisplayVideoFilter(v, Commands::VFBW); } },
        { Commands::VFIR, [](P &p, const QString &v) { p.DisplayVideoFilter(v, Commands::VFIR); } },
        { Commands::VFFL, [](P &p, const QString &) { p.refillVideoFilters(); } },
        { Commands::VFLS, [](P &p, const QString &) { p.refillVideoFilters(); } },
        { Commands::DMLS, [](P &p, const QString &) { p.ui->cboDemodMode->refill(p.m_channel->demodModes()); } },
        { Commands::VIDP, [](P &p, const QString &v) { p.ui->cboAnalogPol->showPosition(v); } },
        { Commands::BSDR, [](P &p, const QString &v) { p.ui->cboDerandomizer->showPosition(v); } },
        { Commands::DDQM, [](P &p, const QString &v) { p.ui->cboDQM->showPosition(v); } },
        { Commands::ADEQ, [](P &p, const QString &v) { p.ui->cboADEQ->showPosition(v); } },
        { Commands::DSRC, [](P &p, const QString &v) { p.DisplayInputSource(v); } },
        { Commands::ALBW, [](P &p, const QString &v) { p.DisplayAutoSettings(v, u"LB"_s); } },
        { Commands::ASRG, [](P &p, const QString &v) { p.DisplayAutoSettings(v, u"RG"_s); } },
        { Commands::ASRT, [](P &p, const QString &v) { p.DisplayAutoSettings(v, u"RT"_s); } },
        { Commands::TMID, [](P &p, const QString &v) { p.DisplayAutoSettings(v, u"MI"_s); } },
        { Commands::AFMS, [](P &p, const QString &v) { p.DisplayAutoSettings(v, u"FM"_s); } },
        { Commands::DVBW, [](P &p, const QString &v) { p.DisplayVideoBandwidth(v); } },
        { Commands::VGN1, [](P &p, const QString &v) { p.DisplayVideoGain(p.outputA(), v); } },
        { Commands::VGN2, [](P &p, const QString &v) { p.DisplayVideoGain(p.outputB(), v); } },
        { Commands::RATEA, [](P &p, const QString &v) { p.DisplayDataRate(p.outputA(), v); } },
        { Commands::RATEB, [](P &p, const QString &v) { p.DisplayDataRate(p.outputB(), v); } },
        { Commands::NAME, [](P &p, const QString &v) { p.showName(p.ui->groupBoxDmd, v, kHeadWidth); } },
    };
    if (const Show route = routes.value(Cmd))
        route(*this, Data);
}

void DemodulatorPanel::restoreEntries()
{
    for (const Output &output : { outputA(), outputB() }) {
        output.rate->setModified(false);
        if (!m_channel->isSetPending(output.rateMnemonic))
            DisplayDataRate(output, (m_channel->*output.getRate)());
    }
}

void DemodulatorPanel::showSlaved(bool slaved) { ui->lblSlaved->setVisible(slaved); }

DemodulatorPanel::Output DemodulatorPanel::outputA() const
{
    return { "A"_L1,
             ui->lineDataRateA,
             ui->sldrAnalogGainA,
             ui->lblAnalogGainAVal,
             &DmdChan::getRATEA,
             &DmdChan::setRATEA,
             &DmdChan::setVGN1,
             Commands::RATEA };
}

DemodulatorPanel::Output DemodulatorPanel::outputB() const
{
    return { "B"_L1,
             ui->lineDataRateB,
             ui->sldrAnalogGainB,
             ui->lblAnalogGainBVal,
             &DmdChan::getRATEB,
             &DmdChan::setRATEB,
             &DmdChan::setVGN2,
             Commands::RATEB };
}

// Handlers

void DemodulatorPanel::cboDMOD_currentIndexChanged(int index)
{
    onOperatorChange([this, index] {
        const DemodMode *const mode = DemodMode::withName(ui->cboDemodMode->itemText(index));
        m_channel->setDMOD((mode ? *mode : DemodMode::fallback()).code);
        if (!m_channel->isSetPending(Commands::DMOD))
            DisplayDemodMode(m_channel->getDMOD()); // a mode of no code stands for the one in force already
    });
}

void DemodulatorPanel::cboDSRC_currentIndexChanged(int index)
{
    onOperatorChange([this, index] {
        if (const QString source = kSources.value(index); !source.isEmpty())
            m_channel->setDSRC(source);
    });
}

void DemodulatorPanel::cboVCFG_currentIndexChanged(int index) { chooseIndex(m_channel, &DmdChan::setVCFG, index); }

void DemodulatorPanel::cboBSDR_currentIndexChanged(int index) { chooseIndex(m_channel, &DmdChan::setBSDR, index); }

void DemodulatorPanel::cboDDQM_currentIndexChanged(int index) { chooseIndex(m_channel, &DmdChan::setDDQM, index); }

void DemodulatorPanel::cboADEQ_currentIndexChanged(int index) { chooseIndex(m_channel, &DmdChan::setADEQ, index); }

void DemodulatorPanel::cboVIDP_currentIndexChanged(int index) { chooseIndex(m_channel, &DmdChan::setVIDP, index); }

void DemodulatorPanel::cboVFBW_currentIndexChanged(int index)
{
    chooseIndex(m_channel, m_families.hasK3050OrK3060Card ? &DmdChan::setVFIR : &DmdChan::setVFBW, index);
}

void DemodulatorPanel::chkboxALBW_released()
{
    chooseChecked(m_channel, &DmdChan::setALBW, ui->checkBoxAutoBW->isChecked());
}

void DemodulatorPanel::chkboxASWRG_released()
{
    chooseChecked(m_channel, &DmdChan::setASRG, ui->checkBoxAutoSweepRange->isChecked());
}

void DemodulatorPanel::chkboxASWSS_released()
{
    chooseChecked(m_channel, &DmdChan::setASRT, ui->checkBoxAutoStepSize->isChecked());
}

void DemodulatorPanel::chkboxATMID_released()
{
    onOperatorChange([this] { m_channel->setTMID(ui->checkBoxAutoModIndex->isChecked() ? u"0"_s : u"0.35"_s); });
}

void DemodulatorPanel::sldrVGNA_valueChanged(int value) { changeGain(outputA(), value); }

void DemodulatorPanel::sldrVGNB_valueChanged(int value) { changeGain(outputB(), value); }

void DemodulatorPanel::changeGain(const Output &output, int value)
{
    if (!AcceptControlChanges())
        return;
    focusReturn().start();
    const QString gain = QString::number(value);
    WidgetUpdate::text(output.gainValue, gainText(gain));
    (m_channel->*output.setGain)(gain);
}

void DemodulatorPanel::lineRATEA_returnPressed() { enterRate(outputA()); }

void DemodulatorPanel::lineRATEB_returnPressed() { enterRate(outputB()); }

void DemodulatorPanel::enterRate(const Output &output)
{
    const QString typed = output.rate->text();
    const bool isEntry = output.rate->isModified() || typed != ValueText::kUnknown;
    const double rate = NumberText::parseScaled(typed);
    const bool isValid = isEntry && CheckValidDataRanges(output.letter, rate);
    if (isValid)
        (m_channel->*output.setRate)(QString::number(rate, 'f', 0));
    output.rate->setModified(false);
    if (!isValid || !m_channel->isSetPending(output.rateMnemonic)) // nothing to wait for: the rate held stays
        DisplayDataRate(output, (m_channel->*output.getRate)());
    focusReturn().stop();
    focusReturn().tick(); // what stands half-typed elsewhere is given up as well
}

bool DemodulatorPanel::CheckValidDataRanges(const QString &letter, double rate)
{
    const DemodMode *const mode = DemodMode::withCode(m_channel->getDMOD());
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
    const DemodMode *const mode = DemodMode::withCode(code);
    if (!mode && !ValueText::isKnown(code)) {
        ui->cboDemodMode->showItem(-1, code);
        return;
    }
    const QLatin1StringView name = (mode ? *mode : DemodMode::fallback()).name;
    ui->cboDemodMode->showItem(ui->cboDemodMode->findText(name), name);
    if (!mode)
        ui->cboDemodMode->showInstead(code); // the card's mode is none of the list
}

QLatin1StringView DemodulatorPanel::videoFilterMnemonic() const
{
    return m_families.hasK3050OrK3060Card ? Commands::VFIR : Commands::VFBW;
}

void DemodulatorPanel::DisplayVideoFilter(const QString &value, QLatin1StringView mnemonic)
{
    if (mnemonic == videoFilterMnemonic())
        ui->cboVFBW->showPosition(value);
}

void DemodulatorPanel::showVideoFilter()
{
    ui->cboVFBW->showPosition(m_families.hasK3050OrK3060Card ? m_channel->getVFIR() : m_channel->getVFBW());
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
    else if (key == "MI"_L1)
        ui->checkBoxAutoModIndex->showValue(value, value == "0.00"_L1,
                                            ValueText::isKnown(value)); // any index is manual
    else if (key == "FM"_L1 || key == "PCM-FM"_L1)
        ui->checkBoxAutoFMSweep->showValue(value);
}

QString DemodulatorPanel::gainText(const QString &value) const
{
    if (m_families.hasK3050OrK3060Card)
        return ValueText::withUnit(value, "dB"_L1);
    const auto gain = NumberText::parseWhole(value); // a percentage is of a whole number
    return gain ? QString::number(qint64(*gain) * 100 / kFullGain) + " %"_L1 : ValueText::shown(value);
}

void DemodulatorPanel::DisplayVideoGain(const Output &output, const QString &value)
{
    WidgetUpdate::text(output.gainValue, gainText(value));
    output.gain->showValue(value);
}

void DemodulatorPanel::DisplayVideoBandwidth(const QString &value)
{
    const QString text = ValueText::shown(NumberText::bandwidth(value));
    WidgetUpdate::text(ui->lblAnalogBWAVal, text);
    WidgetUpdate::text(ui->lblAnalogBWBVal, text);
}

void DemodulatorPanel::DisplayDataRate(const Output &output, const QString &value)
{
    output.rate->showText(ValueText::shown(NumberText::scaled(value)));
}

void DemodulatorPanel::refillVideoFilters()
{
    ui->cboVFBW->refill(m_families.hasK3050OrK3060Card ? m_channel->videoFilters()
                                                       : m_channel->videoFilterBandwidths());
}

// What the mode allows

void DemodulatorPanel::ShowHideControls()
{
    const DemodMode *const mode = DemodMode::withCode(m_channel->getDMOD());
    const DemodMode::Parts without = mode ? mode->without : DemodMode::Parts();
    const bool digital = isOn(m_channel->getVCFG());
    const bool reportsBitSync = m_families.hasQLN424Card || m_families.hasK3050OrK3060Card;
    const auto has = [without](DemodMode::Part part) { return !without.testFlag(part); };

    ShowAnalogA(has(DemodMode::DigitalAnalogA) || !digital);
    ShowAnalogB(has(DemodMode::AnalogB) && (has(DemodMode::DigitalAnalogB) || !digital));
    ShowDataRateB(has(DemodMode::DataRateB));
    ShowPeakDev(has(DemodMode::PeakDev));
    ShowFreqOffset(has(DemodMode::FreqOffset) && m_number != kNumberWithoutOffset);
    ui->checkBoxAutoBW->setEnabled(has(DemodMode::AutoBW));
    ui->checkBoxAutoSweepRange->setEnabled(has(DemodMode::AutoSweepRange));
    ui->checkBoxAutoStepSize->setEnabled(has(DemodMode::AutoStepSize));
    ui->checkBoxAutoModIndex->setEnabled(has(DemodMode::AutoModIndex));
    for (QLabel *label : { ui->lblDemod, ui->lblDemodmark })
        label->setVisible(has(DemodMode::DemodLamp));
    for (QLabel *label : { ui->lblBitSync, ui->lblBitSyncmark })
        label->setVisible(has(DemodMode::BitSyncLamp) || reportsBitSync);
}

void DemodulatorPanel::ShowAnalogA(bool show) { ui->frameAnalogA->setVisible(show); }

void DemodulatorPanel::ShowAnalogB(bool show) { ui->frameAnalogB->setVisible(show); }

void DemodulatorPanel::ShowDataRateB(bool show)
{
    ui->lblDataRateB->setVisible(show);
    ui->lineDataRateB->setVisible(show);
}

void DemodulatorPanel::ShowPeakDev(bool show)
{
    ui->lblPeakDev->setVisible(show);
    ui->lblPeakDevVal->setVisible(show);
}

void DemodulatorPanel::ShowFreqOffset(bool show)
{
    ui->lblFreqOffset->setVisible(show);
    ui->lblFreqOffsetVal->setVisible(show);
}

// Display of status values

void DemodulatorPanel::updateDynamicParams()
{
    UpdateDLCK();
    UpdateBLCK();
    UpdateFOFF();
    UpdatePDEV();
    UpdateVLV1();
}

void DemodulatorPanel::UpdateDLCK() { WidgetUpdate::lockLamp(ui->lblDemod, ui->lblDemodmark, m_channel->getDLCK()); }

void DemodulatorPanel::UpdateBLCK()
{
    WidgetUpdate::lockLamp(ui->lblBitSync, ui->lblBitSyncmark, m_channel->getBLCK());
}

void DemodulatorPanel::UpdateFOFF() { WidgetUpdate::reading(ui->lblFreqOffsetVal, m_channel->getFOFF(), " KHz"_L1); }

void DemodulatorPanel::UpdatePDEV()
{
    WidgetUpdate::reading(ui->lblPeakDevVal, scaledDown(m_channel->getPDEV(), 1e6, 3), " MHz"_L1);
}

void DemodulatorPanel::UpdateVLV1()
{
    WidgetUpdate::reading(ui->lblAnalogAVoltage, scaledDown(m_channel->getVLV1(), 1e3, 2), " V"_L1);
}
