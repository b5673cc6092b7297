#include "frontpanel/DemodulatorPanel.h"

#include "channels/DmdChan.h"
#include "controls/NumberText.h"
#include "controls/OnOff.h"
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
    if (m_families.hasK3050OrK3060Card) {
        refillVideoFilters();
    } else if (!m_families.hasQLN424Card) {
        ui->cboVFBW->addItems(m_channel->videoFilterBandwidths());
        WidgetUpdate::index(ui->cboVFBW, m_channel->getVFBW());
        WidgetUpdate::index(ui->cboAnalogPol, m_channel->getVIDP());
    }
    ui->cboDemodMode->addItems(m_channel->demodModes());
    DisplayDemodMode(m_channel->getDMOD());
    DisplayInputSource(m_channel->getDSRC());
    WidgetUpdate::index(ui->cboOutputMode, m_channel->getVCFG());
    WidgetUpdate::index(ui->cboDerandomizer, m_channel->getBSDR());
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
    WidgetUpdate::index(ui->cboDQM, m_channel->getDDQM());
    WidgetUpdate::index(ui->cboADEQ, m_channel->getADEQ());
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
        { Commands::VCFG,
          [](P &p, const QString &v) { WidgetUpdate::index(p.ui->cboOutputMode, v), p.ShowHideControls(); } },
        // One box for two settings, of which each kind of card has one in use
        { Commands::VFBW, [](P &p, const QString &v) { p.DisplayVideoFilter(v, !p.m_families.hasK3050OrK3060Card); } },
        { Commands::VFIR, [](P &p, const QString &v) { p.DisplayVideoFilter(v, p.m_families.hasK3050OrK3060Card); } },
        { Commands::VFFL, [](P &p, const QString &) { p.refillVideoFilters(); } },
        { Commands::VIDP, [](P &p, const QString &v) { WidgetUpdate::index(p.ui->cboAnalogPol, v); } },
        { Commands::BSDR, [](P &p, const QString &v) { WidgetUpdate::index(p.ui->cboDerandomizer, v); } },
        { Commands::DDQM, [](P &p, const QString &v) { WidgetUpdate::index(p.ui->cboDQM, v); } },
        { Commands::ADEQ, [](P &p, const QString &v) { WidgetUpdate::index(p.ui->cboADEQ, v); } },
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
    const double rate = NumberText::parseScaled(output.rate->text());
    const bool isValid = CheckValidDataRanges(output.letter, rate);
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
    const QLatin1StringView name = (mode ? *mode : DemodMode::fallback()).name;
    ui->cboDemodMode->setCurrentIndex(ui->cboDemodMode->findText(name));
}

void DemodulatorPanel::DisplayVideoFilter(const QString &value, bool isShown)
{
    if (isShown)
        WidgetUpdate::index(ui->cboVFBW, value);
}

void DemodulatorPanel::DisplayInputSource(const QString &value)
{
    const auto source = kSources.indexOf(value);
    const qint64 position = source >= 0 ? source : qint64(value.toInt()) - 1;
    WidgetUpdate::index(ui->cboInputSource, QString::number(position));
}

void DemodulatorPanel::DisplayAutoSettings(const QString &value, const QString &key)
{
    const bool on = isOn(value);
    if (key == "LB"_L1)
        ui->checkBoxAutoBW->setChecked(on);
    else if (key == "RG"_L1)
        ui->checkBoxAutoSweepRange->setChecked(on);
    else if (key == "RT"_L1)
        ui->checkBoxAutoStepSize->setChecked(on);
    else if (key == "MI"_L1)
        ui->checkBoxAutoModIndex->setChecked(value == "0.00"_L1);
    else if (key == "FM"_L1 || key == "PCM-FM"_L1)
        ui->checkBoxAutoFMSweep->setChecked(on);
}

QString DemodulatorPanel::gainText(const QString &value) const
{
    return m_families.hasK3050OrK3060Card ? value + "dB"_L1
                                          : QString::number(qint64(value.toInt()) * 100 / kFullGain) + " %"_L1;
}

void DemodulatorPanel::DisplayVideoGain(const Output &output, const QString &value)
{
    const auto gain = NumberText::parseWhole(value);
    if (gain || (m_families.hasK3050OrK3060Card && NumberText::parse(value))) // a percentage is of a whole number
        WidgetUpdate::text(output.gainValue, gainText(value));
    if (gain && *gain >= output.gain->minimum() && *gain <= output.gain->maximum())
        output.gain->setValue(*gain);
}

void DemodulatorPanel::DisplayVideoBandwidth(const QString &value)
{
    const QString text = NumberText::bandwidth(value);
    WidgetUpdate::text(ui->lblAnalogBWAVal, text);
    WidgetUpdate::text(ui->lblAnalogBWBVal, text);
}

void DemodulatorPanel::DisplayDataRate(const Output &output, const QString &value)
{
    const bool halfTyped = output.rate->hasFocus() && output.rate->isModified();
    const QString text = NumberText::scaled(value);
    if (!halfTyped && output.rate->text() != text)
        output.rate->setText(text);
}

void DemodulatorPanel::refillVideoFilters()
{
    if (!m_families.hasK3050OrK3060Card) // the others choose from a list of their own
        return;
    ui->cboVFBW->clear();
    ui->cboVFBW->addItems(m_channel->videoFilters());
    WidgetUpdate::index(ui->cboVFBW, m_channel->getVFIR());
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

void DemodulatorPanel::UpdateFOFF()
{
    if (const QString offset = m_channel->getFOFF(); NumberText::parse(offset))
        WidgetUpdate::text(ui->lblFreqOffsetVal, offset + " KHz"_L1);
}

void DemodulatorPanel::UpdatePDEV()
{
    if (const auto hertz = NumberText::parse(m_channel->getPDEV()))
        WidgetUpdate::text(ui->lblPeakDevVal, QString::number(*hertz / 1e6, 'f', 3) + " MHz"_L1);
}

void DemodulatorPanel::UpdateVLV1()
{
    if (const auto millivolts = NumberText::parse(m_channel->getVLV1()))
        WidgetUpdate::text(ui->lblAnalogAVoltage, QString::number(*millivolts / 1000, 'f', 2) + " V"_L1);
}
