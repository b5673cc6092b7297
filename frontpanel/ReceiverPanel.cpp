#include "frontpanel/ReceiverPanel.h"

#include "channels/RcvrChan.h"
#include "controls/NumberText.h"
#include "controls/ValueText.h"
#include "controls/WheelGuard.h"
#include "controls/WidgetUpdate.h"
#include "ui_ReceiverPanel.h"

#include <QHash>
#include <QLineEdit>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

using Commands = RcvrChan::Commands;

constexpr double kFrequencyStep = 0.1;       // MHz
constexpr double kFrequencyTolerance = 1e-6; // MHz; sums of tenths are not exact
constexpr int kCarrierThreshold = 3;         // dB above the AGC zero
constexpr QLatin1StringView kOffsetUnit{ " KHz" };

const QString kStressLocked = u"background-color: rgb(229, 227, 225); color: #28c125;"_s;
const QString kStressUnlocked = u"background-color: rgb(229, 227, 225); color: #f11029;"_s;
const QString kManualOffset = u"background-color: rgb(229, 227, 225); color: #000000;"_s;
const QString kPlainReference = u"color:#000000"_s;

bool isManualAfc(const QString &AFC) { return AFC == "4"_L1; }

bool isAutomaticAfc(const QString &AFC)
{
    const auto mode = NumberText::parseWhole(AFC);
    return mode && *mode >= 0 && *mode <= 3;
}

bool isSameFrequency(double a, double b) { return std::abs(a - b) < kFrequencyTolerance; }

} // namespace

ReceiverPanel::ReceiverPanel(int number, const PanelContext &context, QWidget *parent)
    : ChannelPanel(context, parent)
    , ui(std::make_unique<Ui::ReceiverPanel>())
{
    ui->setupUi(this);
    const QString digit = QString::number(number);
    ui->groupBoxRcvr->setTitle(ui->groupBoxRcvr->title() + digit);
    ui->lblChanRcvr->setText(ui->lblChanRcvr->text() + u' ' + digit);
    nameChildren(u"ch"_s + digit, digit);
    ui->lblSlaved->hide();
    ui->lblPLYB->hide();
    ui->cboPLYB->hide();
    WheelGuard::protect(this);
    hide();
}

ReceiverPanel::~ReceiverPanel() = default;

QWidget *ReceiverPanel::neutralFocusHolder() const { return ui->lblRFFQ; }

void ReceiverPanel::setChannel(RcvrChan *channel)
{
    m_channel = channel;
    follow(channel);
    {
        const ControlGuard::Scope filling(guard());
        fill();
    }
    connectControls();
    show();
}

void ReceiverPanel::showPlayback()
{
    ui->lblPLYB->show();
    ui->cboPLYB->show();
}

void ReceiverPanel::fill()
{
    ui->cboIFBW->refill(m_channel->ifBandwidths());
    showFrequency(m_channel->getFREQ());
    ui->cboIFBW->showPosition(m_channel->getIFBW());
    AGCFreeze(m_channel->getAGCF());
    AGCZero(m_channel->getAGCZ());
    SLPA(m_channel->getSLPA());
    SLPB(m_channel->getSLPB());
    ui->cboPOLA->showPosition(m_channel->getPOLA());
    ui->cboPOLB->showPosition(m_channel->getPOLB());
    ui->cboAGCT->showPosition(m_channel->getAGCT());
    AFC(m_channel->getAFC());
    showManualOffset(m_channel->getAFCM());
    ui->cboCAMP->showPosition(m_channel->getCAMP());
    TapePlayback(m_channel->getPLYB());
    DisplayAntennaCF(m_channel->getACFE(), m_channel->getANCF());
    showName(ui->groupBoxRcvr, m_channel->getNAME());
    updateDynamicParams();
}

void ReceiverPanel::connectControls()
{
    const auto onIndex = [this](QComboBox *box, void (ReceiverPanel::*handler)(int)) {
        connect(box, &QComboBox::currentIndexChanged, this, handler);
    };
    connect(ui->doubleSpinBoxFREQ, &QDoubleSpinBox::textChanged, this, &ReceiverPanel::doubleSpinBoxFREQ_valueChanged);
    connect(ui->doubleSpinBoxFREQ->lineEdit(), &QLineEdit::textEdited, &focusReturn(), &FocusReturn::start);
    onIndex(ui->cboIFBW, &ReceiverPanel::cboIFBW_currentIndexChanged);
    onRefilled(ui->cboIFBW, Commands::IFBW, [this] { ui->cboIFBW->showPosition(m_channel->getIFBW()); });
    onIndex(ui->cboSLPA, &ReceiverPanel::cboSLPA_currentIndexChanged);
    onIndex(ui->cboSLPB, &ReceiverPanel::cboSLPB_currentIndexChanged);
    onIndex(ui->cboPOLA, &ReceiverPanel::cboPOLA_currentIndexChanged);
    onIndex(ui->cboPOLB, &ReceiverPanel::cboPOLB_currentIndexChanged);
    onIndex(ui->cboAGCT, &ReceiverPanel::cboAGCT_currentIndexChanged);
    onIndex(ui->cboAFC, &ReceiverPanel::cboAFC_currentIndexChanged);
    onIndex(ui->cboCAMP, &ReceiverPanel::cboCAMP_currentIndexChanged);
    onIndex(ui->cboPLYB, &ReceiverPanel::cboPLYB_currentIndexChanged);
    connect(ui->btnAGCF, &QPushButton::clicked, this, &ReceiverPanel::btnAGCF_clicked);
    connect(ui->btnAGCZ, &QPushButton::clicked, this, &ReceiverPanel::btnAGCZ_clicked);
    connect(ui->sldrAFCM, &QSlider::valueChanged, this, &ReceiverPanel::sldrAFCM_valueChanged);
    connect(ui->lineAntennaCF, &QLineEdit::returnPressed, this, &ReceiverPanel::lineANCF_returnPressed);
    connect(ui->lineAntennaCF, &QLineEdit::textEdited, this, &ReceiverPanel::lineANCF_textEdited);
    connect(ui->checkBoxAntennaCF, &QCheckBox::released, this, &ReceiverPanel::chkboxACFE_released);
}

void ReceiverPanel::showSetting(const QString &Cmd, const QString &Data)
{
    using Show = void (*)(ReceiverPanel &, const QString &);
    using P = ReceiverPanel;
    static const QHash<QString, Show> routes{
        { Commands::FREQ, [](P &p, const QString &v) { p.showFrequency(v); } },
        { Commands::IFLS, [](P &p, const QString &) { p.ui->cboIFBW->refill(p.m_channel->ifBandwidths()); } },
        { Commands::IFBW, [](P &p, const QString &v) { p.ui->cboIFBW->showPosition(v); } },
        { Commands::AGCF, [](P &p, const QString &v) { p.AGCFreeze(v); } },
        { Commands::AGCZ, [](P &p, const QString &v) { p.AGCZero(v); } },
        { Commands::SLPA, [](P &p, const QString &v) { p.SLPA(v); } },
        { Commands::SLPB, [](P &p, const QString &v) { p.SLPB(v); } },
        { Commands::POLA, [](P &p, const QString &v) { p.ui->cboPOLA->showPosition(v); } },
        { Commands::POLB, [](P &p, const QString &v) { p.ui->cboPOLB->showPosition(v); } },
        { Commands::AGCT, [](P &p, const QString &v) { p.ui->cboAGCT->showPosition(v); } },
        { Commands::CAMP, [](P &p, const QString &v) { p.ui->cboCAMP->showPosition(v); } },
        { Commands::AFC, [](P &p, const QString &v) { p.AFC(v); } },
        { Commands::AFCM, [](P &p, const QString &v) { p.showManualOffset(v); } },
        { Commands::PLYB, [](P &p, const QString &v) { p.TapePlayback(v); } },
        { Commands::ACFE, [](P &p, const QString &v) { p.DisplayAntennaCF(v, p.m_channel->getANCF()); } },
        { Commands::ANCF, [](P &p, const QString &v) { p.DisplayAntennaCF(p.m_channel->getACFE(), v); } },
        { Commands::NAME, [](P &p, const QString &v) { p.showName(p.ui->groupBoxRcvr, v); } },
    };
    if (const Show route = routes.value(Cmd))
        route(*this, Data);
}

void ReceiverPanel::restoreEntries()
{
    const ControlGuard::Scope showing(guard());
    ui->doubleSpinBoxFREQ->discard(); // what is typed, not the step asked for
    if (!m_channel->isSetPending(Commands::FREQ))
        showFrequency(m_channel->getFREQ());
    ui->lineAntennaCF->setModified(false);
    DisplayAntennaCF(m_channel->getACFE(), m_channel->getANCF());
}

void ReceiverPanel::showSlaved(bool slaved) { ui->lblSlaved->setVisible(slaved); }

// Handlers

void ReceiverPanel::doubleSpinBoxFREQ_valueChanged(const QString &text)
{
    onOperatorChange([this, &text] {
        const double frequency = text.toDouble();
        if (!isTunable(frequency)) {
            refuseFrequency(frequency);
            return;
        }
        m_channel->setFREQ(text);
        ui->doubleSpinBoxFREQ->lineEdit()->deselect();
    });
}

bool ReceiverPanel::isTunable(double frequency) const
{
    const QList<double> &bounds = m_channel->frequencyBounds();
    for (qsizetype upper = 0; upper + 1 < bounds.size(); upper += 2) {
        if (frequency <= bounds[upper] + kFrequencyTolerance && frequency >= bounds[upper + 1] - kFrequencyTolerance)
            return true;
    }
    return false;
}

/// The edge of a range that lies one step before @p frequency, and where that step leads to: the nearest edge of the
/// next range, round from the last to the first.
std::optional<double> ReceiverPanel::beyondRangeEdge(double frequency) const
{
    const QList<double> &bounds = m_channel->frequencyBounds();
    const auto count = bounds.size();
    for (qsizetype lower = 1; lower < count; lower += 2) {
        if (isSameFrequency(frequency, bounds[lower] - kFrequencyStep))
            return bounds[(lower + 1) % count];
    }
    for (qsizetype upper = 0; upper < count; upper += 2) {
        if (isSameFrequency(frequency, bounds[upper] + kFrequencyStep))
            return bounds[(upper + count - 1) % count];
    }
    return std::nullopt;
}

void ReceiverPanel::refuseFrequency(double frequency)
{
    DecimalSpinBox *const box = ui->doubleSpinBoxFREQ;
    if (auto next = beyondRangeEdge(frequency)) {
        next = std::clamp(*next, box->minimum(), box->maximum());
        if (isTunable(*next)) {   // a card may report ranges that make no sense
            box->setValue(*next); // comes back to the handler, which sends it
            return;
        }
    }
    box->discard();
    showFrequency(m_channel->getFREQ());
}

void ReceiverPanel::cboIFBW_currentIndexChanged(int index) { chooseIndex(m_channel, &RcvrChan::setIFBW, index); }

void ReceiverPanel::btnAGCF_clicked() { toggle(ui->btnAGCF, m_channel, m_channel->getAGCF(), &RcvrChan::setAGCF); }

void ReceiverPanel::btnAGCZ_clicked()
{
    const QString value = isOff(m_channel->getAGCZ()) ? u"1"_s : u"0"_s;
    AGCZero(value);
    m_channel->setAGCZ(value);
    focusReturn().giveBack();
}

void ReceiverPanel::cboSLPA_currentIndexChanged(int index)
{
    onOperatorChange([this, value = QString::number(index)] {
        WidgetUpdate::agcSlope(ui->progBarAGCA, value);
        m_channel->setSLPA(value);
    });
}

void ReceiverPanel::cboSLPB_currentIndexChanged(int index)
{
    onOperatorChange([this, value = QString::number(index)] {
        WidgetUpdate::agcSlope(ui->progBarAGCB, value);
        m_channel->setSLPB(value);
    });
}

void ReceiverPanel::cboPOLA_currentIndexChanged(int index) { chooseIndex(m_channel, &RcvrChan::setPOLA, index); }

void ReceiverPanel::cboPOLB_currentIndexChanged(int index) { chooseIndex(m_channel, &RcvrChan::setPOLB, index); }

void ReceiverPanel::cboAGCT_currentIndexChanged(int index) { chooseIndex(m_channel, &RcvrChan::setAGCT, index); }

void ReceiverPanel::cboAFC_currentIndexChanged(int index)
{
    onOperatorChange([this, value = QString::number(index)] {
        showAfcMode(value);
        m_channel->setAFC(value);
    });
}

void ReceiverPanel::sldrAFCM_valueChanged(int value)
{
    onOperatorChange([this, offset = QString::number(value)] {
        WidgetUpdate::text(ui->lblRLSTval, offset + kOffsetUnit);
        m_channel->setAFCM(offset);
    });
}

void ReceiverPanel::cboCAMP_currentIndexChanged(int index) { chooseIndex(m_channel, &RcvrChan::setCAMP, index); }

void ReceiverPanel::cboPLYB_currentIndexChanged(int index) { chooseIndex(m_channel, &RcvrChan::setPLYB, index); }

void ReceiverPanel::lineANCF_returnPressed()
{
    ValueEdit *const line = ui->lineAntennaCF;
    if (line->isModified() || line->text() != ValueText::kUnknown) { // which is no entry
        const int factor = line->text().toInt();                     // anything but a whole number counts as 0
        if (factor == 0)
            line->setText(u"0"_s);
        m_channel->setANCF(QString::number(factor));
    }
    line->setModified(false);
    focusReturn().stop();
    focusReturn().giveBack();
}

void ReceiverPanel::lineANCF_textEdited() { focusReturn().start(); }

void ReceiverPanel::chkboxACFE_released()
{
    onOperatorChange([this] {
        const bool enabled = ui->checkBoxAntennaCF->isChecked();
        m_channel->setACFE(enabled ? u"1"_s : u"0"_s);
        ui->lineAntennaCF->setEnabled(enabled);
    });
}

// Display of settings

void ReceiverPanel::showFrequency(const QString &FREQ)
{
    DecimalSpinBox *const box = ui->doubleSpinBoxFREQ;
    if (box->isHalfTyped())
        return;
    const auto frequency = NumberText::parse(FREQ);
    if (frequency && *frequency >= box->minimum() && *frequency <= box->maximum())
        box->showNumber(*frequency);
    else
        box->showText(ValueText::shown(FREQ), frequency.value_or(0));
}

void ReceiverPanel::showManualOffset(const QString &AFCM)
{
    ui->sldrAFCM->showValue(AFCM);
    WidgetUpdate::text(ui->lblRLSTval, ValueText::withUnit(AFCM, kOffsetUnit));
}

void ReceiverPanel::AGCFreeze(const QString &value) { WidgetUpdate::onOff(ui->btnAGCF, value); }

void ReceiverPanel::AGCZero(const QString &value)
{
    WidgetUpdate::onOff(ui->btnAGCZ, value);
    if (isOff(value) || !ValueText::isKnown(value)) {
        WidgetUpdate::range(ui->progBarSSLV, -140, 20);
        showSignalReference(m_channel->getACFE());
    } else if (isOn(value)) {
        WidgetUpdate::range(ui->progBarSSLV, 0, 160);
        showReference(u"(Relative)"_s, u"color:#28c125"_s);
    } else {
        return;
    }
    ui->lblCARR->setVisible(isOn(value));
    ui->lblCARRmark->setVisible(isOn(value));
}

void ReceiverPanel::showSignalReference(const QString &ACFE)
{
    if (isOn(ACFE))
        showReference(u"(Antenna)"_s, u"color:#fcfd0f"_s);
    else
        showReference(u"(Absolute)"_s, kPlainReference);
}

void ReceiverPanel::showReference(const QString &text, const QString &style)
{
    WidgetUpdate::text(ui->lblRelAbs, text);
    ui->lblRelAbs->setProperty("bright", style != kPlainReference); // bright text stands on a dark ground
    WidgetUpdate::style(ui->lblRelAbs, style);
}

void ReceiverPanel::SLPA(const QString &value) { WidgetUpdate::agcSlope(ui->cboSLPA, ui->progBarAGCA, value); }

void ReceiverPanel::SLPB(const QString &value) { WidgetUpdate::agcSlope(ui->cboSLPB, ui->progBarAGCB, value); }

void ReceiverPanel::AFC(const QString &value)
{
    ui->cboAFC->showPosition(value);
    showAfcMode(value);
}

void ReceiverPanel::showAfcMode(const QString &AFC)
{
    const bool manual = isManualAfc(AFC);
    WidgetUpdate::text(ui->lblAFCAutoMan, manual ? u"Offset"_s : u"Loop Stress"_s);
    ui->sldrAFCM->setVisible(manual);
    if (manual) {
        WidgetUpdate::style(ui->lblRLSTval, kManualOffset);
        WidgetUpdate::text(ui->lblRLSTval, ValueText::withUnit(ui->sldrAFCM->shownText(), kOffsetUnit));
        WidgetUpdate::text(ui->lblRLSTmark, {});
        WidgetUpdate::description(ui->lblRLSTval, {});
    } else if (!isAutomaticAfc(AFC)) {
        WidgetUpdate::style(ui->lblRLSTval, {}); // whatever it shows
    }
}

void ReceiverPanel::TapePlayback(const QString &value)
{
    ui->cboPLYB->showPosition(value);
    if (!isOn(value) && !isOff(value))
        return;
    if (isOn(value)) { // the box loses the focus, which would commit half an entry
        ui->doubleSpinBoxFREQ->discard();
        showFrequency(m_channel->getFREQ());
    }
    ui->doubleSpinBoxFREQ->setEnabled(isOff(value));
    for (QProgressBar *bar : { ui->progBarSSLV, ui->progBarAGCA, ui->progBarAGCB })
        bar->setVisible(isOff(value));
    Q_EMIT playbackShown(isOn(value));
}

void ReceiverPanel::DisplayAntennaCF(const QString &ACFE, const QString &ANCF)
{
    ui->checkBoxAntennaCF->showValue(ACFE);
    ui->lineAntennaCF->setEnabled(isOn(ACFE));
    if (!isOn(ACFE))
        ui->lineAntennaCF->setModified(false); // nobody can end the entry
    if (isOff(m_channel->getAGCZ()))
        showSignalReference(ACFE);
    ui->lineAntennaCF->showText(ValueText::shown(ANCF));
}

// Display of status values

void ReceiverPanel::updateDynamicParams()
{
    UpdateSYNL();
    UpdateMAFL();
    UpdateRLST();
    UpdateSSLV();
    UpdateAGCA();
    UpdateAGCB();
}

void ReceiverPanel::UpdateSYNL() { WidgetUpdate::lockLamp(ui->lblSYNL, ui->lblSYNLmark, m_channel->getSYNL()); }

void ReceiverPanel::UpdateMAFL()
{
    const QString locked = m_channel->getMAFL();
    if (!isAutomaticAfc(m_channel->getAFC()) || (!isOn(locked) && !isOff(locked)))
        return;
    const QString word = isOn(locked) ? u"in lock"_s : u"out of lock"_s;
    WidgetUpdate::style(ui->lblRLSTval, isOn(locked) ? kStressLocked : kStressUnlocked);
    WidgetUpdate::text(ui->lblRLSTmark, word);
    WidgetUpdate::description(ui->lblRLSTval, word);
}

void ReceiverPanel::UpdateRLST()
{
    if (isAutomaticAfc(m_channel->getAFC()))
        WidgetUpdate::reading(ui->lblRLSTval, m_channel->getRLST(), kOffsetUnit);
}

void ReceiverPanel::UpdateSSLV()
{
    const auto level = NumberText::parse(m_channel->getSSLV());
    if (!level)
        return;
    const int decibels = NumberText::rounded(*level);
    const QString zero = m_channel->getAGCZ();
    const QString unit = isOff(zero) ? u" dBm"_s : isOn(zero) ? u" dB"_s : QString();
    WidgetUpdate::format(ui->progBarSSLV, NumberText::fixed(std::round(*level) + 0.0, 0) + unit);
    if (isOn(zero)) {
        const bool present = decibels >= kCarrierThreshold;
        WidgetUpdate::lamp(ui->lblCARR, ui->lblCARRmark, present, present ? u"Yes"_s : u"No"_s);
    }
    WidgetUpdate::clampedValue(ui->progBarSSLV, decibels);
}

void ReceiverPanel::UpdateAGCA()
{
    WidgetUpdate::agcLevel(ui->progBarAGCA, m_channel->getAGCA(), m_channel->getPOLA());
}

void ReceiverPanel::UpdateAGCB()
{
    WidgetUpdate::agcLevel(ui->progBarAGCB, m_channel->getAGCB(), m_channel->getPOLB());
}
