#include "frontpanel/ReceiverPanel.h"

#include "controls/ValueText.h"
#include "controls/WheelGuard.h"
#include "ui_ReceiverPanel.h"

using namespace Qt::StringLiterals;

namespace {

using Commands = RcvrChan::Commands;

} // namespace

ReceiverPanel::ReceiverPanel(int number, const PanelContext &context, QWidget *parent)
    : PanelOf(context, parent)
    , ui(std::make_unique<Ui::ReceiverPanel>())
    , m_offset(*ui)
    , m_signal(*ui)
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
    follow(channel);
    m_frequency.setChannel(channel, ui->doubleSpinBoxFREQ);
    m_antennaFactor = EntryField::of(ui->lineAntennaCF, channel, Commands::ANCF, &RcvrChan::getANCF,
                                     [](const QString &value) { return ValueText::shown(value); });
    {
        const ControlGuard::Scope filling(guard());
        createTable();
        settings().fill();
        updateDynamicParams();
    }
    connectControls();
    show();
}

void ReceiverPanel::showPlayback()
{
    ui->lblPLYB->show();
    ui->cboPLYB->show();
}

void ReceiverPanel::createTable()
{
    using C = RcvrChan;
    using P = ReceiverPanel;
    addItems(Commands::IFLS, &C::getIFLS, ui->cboIFBW, &C::ifBandwidths, Commands::IFBW);
    addChoice(Commands::IFBW, &C::getIFBW, ui->cboIFBW, &P::cboIFBW_currentIndexChanged);
    add(Commands::FREQ, &C::getFREQ, [this](const QString &v) { m_frequency.show(v); });
    add(Commands::AGCF, &C::getAGCF, [this](const QString &v) { AGCFreeze(v); });
    add(Commands::AGCZ, &C::getAGCZ, [this](const QString &v) { AGCZero(v); });
    addChoice(Commands::SLPA, &C::getSLPA, ui->cboSLPA, &P::cboSLPA_currentIndexChanged,
              [this](const QString &v) { SLPA(v); });
    addChoice(Commands::SLPB, &C::getSLPB, ui->cboSLPB, &P::cboSLPB_currentIndexChanged,
              [this](const QString &v) { SLPB(v); });
    addChoice(Commands::POLA, &C::getPOLA, ui->cboPOLA, &P::cboPOLA_currentIndexChanged);
    addChoice(Commands::POLB, &C::getPOLB, ui->cboPOLB, &P::cboPOLB_currentIndexChanged);
    addChoice(Commands::AGCT, &C::getAGCT, ui->cboAGCT, &P::cboAGCT_currentIndexChanged);
    addChoice(Commands::AFC, &C::getAFC, ui->cboAFC, &P::cboAFC_currentIndexChanged,
              [this](const QString &v) { AFC(v); });
    add(Commands::AFCM, &C::getAFCM, [this](const QString &v) { m_offset.showManualOffset(v); });
    addChoice(Commands::CAMP, &C::getCAMP, ui->cboCAMP, &P::cboCAMP_currentIndexChanged);
    addChoice(Commands::PLYB, &C::getPLYB, ui->cboPLYB, &P::cboPLYB_currentIndexChanged,
              [this](const QString &v) { TapePlayback(v); });
    add(Commands::ACFE, &C::getACFE, [this](const QString &v) { DisplayAntennaCF(v, channel()->getANCF()); });
    add(Commands::ANCF, &C::getANCF, [this](const QString &v) { DisplayAntennaCF(channel()->getACFE(), v); });
    addName(ui->groupBoxRcvr);
}

void ReceiverPanel::connectControls()
{
    using P = ReceiverPanel;
    connect(ui->doubleSpinBoxFREQ, &QDoubleSpinBox::textChanged, this, &P::doubleSpinBoxFREQ_valueChanged);
    connect(ui->doubleSpinBoxFREQ->lineEdit(), &QLineEdit::textEdited, &focusReturn(), &FocusReturn::start);
    connect(ui->btnAGCF, &QPushButton::clicked, this, &P::btnAGCF_clicked);
    connect(ui->btnAGCZ, &QPushButton::clicked, this, &P::btnAGCZ_clicked);
    connect(ui->sldrAFCM, &QSlider::valueChanged, this, &P::sldrAFCM_valueChanged);
    connect(ui->lineAntennaCF, &QLineEdit::returnPressed, this, &P::lineANCF_returnPressed);
    connect(ui->lineAntennaCF, &QLineEdit::textEdited, this, &P::lineANCF_textEdited);
    connect(ui->checkBoxAntennaCF, &QCheckBox::released, this, &P::chkboxACFE_released);
}

void ReceiverPanel::restoreEntries()
{
    const ControlGuard::Scope showing(guard());
    m_frequency.restore();
    m_antennaFactor.giveUp();
    DisplayAntennaCF(channel()->getACFE(), channel()->getANCF());
}

void ReceiverPanel::showSlaved(bool slaved) { ui->lblSlaved->setVisible(slaved); }

// Handlers

void ReceiverPanel::doubleSpinBoxFREQ_valueChanged(const QString &text)
{
    onOperatorChange([this, &text] { m_frequency.tune(text); });
}

void ReceiverPanel::btnAGCF_clicked()
{
    toggle(
        channel()->getAGCF(), [this](const QString &value) { AGCFreeze(value); }, &RcvrChan::setAGCF);
}

void ReceiverPanel::btnAGCZ_clicked()
{
    toggle(
        channel()->getAGCZ(), [this](const QString &value) { AGCZero(value); }, &RcvrChan::setAGCZ);
}

void ReceiverPanel::cboSLPA_currentIndexChanged(int index) { chooseSlope(ui->progBarAGCA, &RcvrChan::setSLPA, index); }

void ReceiverPanel::cboSLPB_currentIndexChanged(int index) { chooseSlope(ui->progBarAGCB, &RcvrChan::setSLPB, index); }

void ReceiverPanel::cboAFC_currentIndexChanged(int index)
{
    onOperatorChange([this, value = QString::number(index)] {
        m_offset.showMode(value);
        channel()->setAFC(value);
    });
}

void ReceiverPanel::sldrAFCM_valueChanged(int value)
{
    onOperatorChange([this, value] {
        m_offset.showSliderOffset(value);
        channel()->setAFCM(QString::number(value));
    });
}

void ReceiverPanel::lineANCF_returnPressed()
{
    if (m_antennaFactor.hasValue()) {
        const int factor = m_antennaFactor.text().toInt(); // 0 for anything but a whole number
        if (factor == 0)
            ui->lineAntennaCF->setText(u"0"_s);
        channel()->setANCF(QString::number(factor));
    }
    m_antennaFactor.end();
    focusReturn().stop();
    focusReturn().giveBack();
}

void ReceiverPanel::chkboxACFE_released()
{
    onOperatorChange([this] {
        const bool isEnabled = ui->checkBoxAntennaCF->isChecked();
        channel()->setACFE(isEnabled ? u"1"_s : u"0"_s);
        ui->lineAntennaCF->setEnabled(isEnabled);
    });
}

// Display of settings

void ReceiverPanel::AGCFreeze(const QString &value) { WidgetUpdate::onOff(ui->btnAGCF, value); }

void ReceiverPanel::AGCZero(const QString &value)
{
    WidgetUpdate::onOff(ui->btnAGCZ, value);
    m_signal.showZero(value, channel()->getACFE());
}

void ReceiverPanel::SLPA(const QString &value) { WidgetUpdate::agcSlope(ui->cboSLPA, ui->progBarAGCA, value); }

void ReceiverPanel::SLPB(const QString &value) { WidgetUpdate::agcSlope(ui->cboSLPB, ui->progBarAGCB, value); }

void ReceiverPanel::AFC(const QString &value)
{
    ui->cboAFC->showPosition(value);
    m_offset.showMode(value);
}

void ReceiverPanel::TapePlayback(const QString &value)
{
    ui->cboPLYB->showPosition(value);
    if (!isOn(value) && !isOff(value))
        return;
    if (isOn(value)) // the box loses the focus, which would commit a half-typed text
        m_frequency.giveUp();
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
        m_antennaFactor.giveUp(); // nobody can end the entry
    m_signal.showReference(channel()->getAGCZ(), ACFE);
    m_antennaFactor.show(ANCF);
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

void ReceiverPanel::UpdateSYNL() { WidgetUpdate::lockLamp(ui->lblSYNL, ui->lblSYNLmark, channel()->getSYNL()); }

void ReceiverPanel::UpdateAGCA()
{
    WidgetUpdate::agcLevel(ui->progBarAGCA, channel()->getAGCA(), channel()->getPOLA());
}

void ReceiverPanel::UpdateAGCB()
{
    WidgetUpdate::agcLevel(ui->progBarAGCB, channel()->getAGCB(), channel()->getPOLB());
}
