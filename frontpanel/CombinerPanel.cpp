#include "frontpanel/CombinerPanel.h"

#include "controls/ValueText.h"
#include "controls/WheelGuard.h"
#include "ui_CombinerPanel.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

/// Shows a state, to a screen reader too, which knows the label by its accessible name.
void showWord(QLabel *label, const QString &word)
{
    WidgetUpdate::text(label, word);
    WidgetUpdate::description(label, word);
}

} // namespace

CombinerPanel::CombinerPanel(int number, const PanelContext &context, QWidget *parent)
    : PanelOf(context, parent)
    , ui(std::make_unique<Ui::CombinerPanel>())
{
    ui->setupUi(this);
    const QString digit = QString::number(number);
    ui->groupBoxCmbr->setTitle(ui->groupBoxCmbr->title() + digit);
    ui->lblChanCmbr->setText(ui->lblChanCmbr->text() + u' ' + digit);
    nameChildren(u"cmb"_s + digit, digit);
    ui->lblIFBW->hide();
    ui->cboIFBW->hide();
    WheelGuard::protect(this);
    hide();
}

CombinerPanel::~CombinerPanel() = default;

void CombinerPanel::setChannel(CmbrChan *channel, const CardFamilies &families)
{
    follow(channel);
    {
        const ControlGuard::Scope filling(guard());
        showParts(families);
        createTable();
        settings().fill();
        updateDynamicParams();
    }
    show();
}

void CombinerPanel::showParts(const CardFamilies &families)
{
    if (!families.hasQLN424Card && !families.hasK3050OrK3060Card) {
        ui->lblIFBW->show();
        ui->cboIFBW->show();
    }
    if (families.hasQLDXCard || families.hasK3050OrK3060Card)
        return;
    for (QWidget *part : std::initializer_list<QWidget *>{
             ui->lblCMBZ1, ui->lblCMBZ2, ui->btnCMBZ1, ui->btnCMBZ2,    ui->lblVideoMode, ui->cboVideoMode, ui->lblAGCZ,
             ui->btnAGCZ,  ui->lblAGCAP, ui->cboPOLA,  ui->lblAGCAS,    ui->cboSLPA,      ui->lblAGCBP,     ui->cboPOLB,
             ui->lblAGCBS, ui->cboSLPB,  ui->lblAGCA,  ui->progBarAGCA, ui->lblAGCB,      ui->progBarAGCB })
        part->hide();
}

void CombinerPanel::createTable()
{
    using Commands = CmbrChan::Commands;
    using C = CmbrChan;
    using P = CombinerPanel;
    addItems(Commands::IFLS, &C::getIFLS, ui->cboIFBW, &C::ifBandwidths, Commands::IFBW);
    addChoice(Commands::IFBW, &C::getIFBW, ui->cboIFBW,
              ui->cboIFBW->isHidden() ? nullptr : &P::cboIFBWcmb_currentIndexChanged);
    addChoice(Commands::CVMD, &C::getCVMD, ui->cboVideoMode, &P::cboCVMD_currentIndexChanged);
    addChoice(Commands::CMOD, &C::getCMOD, ui->cboOutputMode, &P::cboCMOD_currentIndexChanged);
    add(Commands::CHZC, &C::getCHZC, [this](const QString &v) { AGCZerocmb(v); });
    add(Commands::CHZ1, &C::getCHZ1, [this](const QString &v) { CH1Zero(v); });
    add(Commands::CHZ2, &C::getCHZ2, [this](const QString &v) { CH2Zero(v); });
    addChoice(Commands::SLPA, &C::getSLPA, ui->cboSLPA, &P::cboSLPAcmb_currentIndexChanged,
              [this](const QString &v) { SLPAcmb(v); });
    addChoice(Commands::SLPB, &C::getSLPB, ui->cboSLPB, &P::cboSLPBcmb_currentIndexChanged,
              [this](const QString &v) { SLPBcmb(v); });
    addChoice(Commands::POLA, &C::getPOLA, ui->cboPOLA, &P::cboPOLAcmb_currentIndexChanged);
    addChoice(Commands::POLB, &C::getPOLB, ui->cboPOLB, &P::cboPOLBcmb_currentIndexChanged);
    addName(ui->groupBoxCmbr);
    connect(ui->btnAGCZ, &QPushButton::clicked, this, &P::btnAGCZcmb_clicked);
    connect(ui->btnCMBZ1, &QPushButton::clicked, this, &P::btnCHZ1_clicked);
    connect(ui->btnCMBZ2, &QPushButton::clicked, this, &P::btnCHZ2_clicked);
}

void CombinerPanel::showAgcLevels(bool shown)
{
    ui->progBarAGCA->setVisible(shown);
    ui->progBarAGCB->setVisible(shown);
}

// Handlers

void CombinerPanel::cboSLPAcmb_currentIndexChanged(int index)
{
    chooseSlope(ui->progBarAGCA, &CmbrChan::setSLPA, index);
}

void CombinerPanel::cboSLPBcmb_currentIndexChanged(int index)
{
    chooseSlope(ui->progBarAGCB, &CmbrChan::setSLPB, index);
}

void CombinerPanel::btnAGCZcmb_clicked()
{
    toggle(
        channel()->getCHZC(), [this](const QString &value) { AGCZerocmb(value); }, &CmbrChan::setCHZC);
}

void CombinerPanel::btnCHZ1_clicked()
{
    toggle(
        channel()->getCHZ1(), [this](const QString &value) { CH1Zero(value); }, &CmbrChan::setCHZ1);
}

void CombinerPanel::btnCHZ2_clicked()
{
    toggle(
        channel()->getCHZ2(), [this](const QString &value) { CH2Zero(value); }, &CmbrChan::setCHZ2);
}

// Display of settings

void CombinerPanel::AGCZerocmb(const QString &value) { WidgetUpdate::onOff(ui->btnAGCZ, value); }

void CombinerPanel::CH1Zero(const QString &value) { WidgetUpdate::onOff(ui->btnCMBZ1, value); }

void CombinerPanel::CH2Zero(const QString &value) { WidgetUpdate::onOff(ui->btnCMBZ2, value); }

void CombinerPanel::SLPAcmb(const QString &value) { WidgetUpdate::agcSlope(ui->cboSLPA, ui->progBarAGCA, value); }

void CombinerPanel::SLPBcmb(const QString &value) { WidgetUpdate::agcSlope(ui->cboSLPB, ui->progBarAGCB, value); }

// Display of status values

void CombinerPanel::updateDynamicParams()
{
    UpdateCLCK();
    UpdateCLCS();
    UpdateAGCAcmb();
    UpdateAGCBcmb();
}

void CombinerPanel::UpdateCLCK()
{
    const QString locked = channel()->getCLCK();
    const QString channels = channel()->getCLCS();
    if (isOn(locked)) {
        if (channels == "0"_L1)
            WidgetUpdate::style(ui->lblCMBstatus, u"background-color: #24d620;"_s);
        else if (channels == "1"_L1 || channels == "2"_L1)
            WidgetUpdate::style(ui->lblCMBstatus, u"background-color: #fcfd0f;"_s);
        showWord(ui->lblCMBstatus, u"Locked"_s);
    } else if (isOff(locked)) {
        WidgetUpdate::style(ui->lblCMBstatus, u"background-color: #f11029;"_s);
        showWord(ui->lblCMBstatus, u"Unlocked"_s);
    } else if (!ValueText::isKnown(locked)) {
        showWord(ui->lblCMBstatus, ValueText::shown(locked));
    }
}

void CombinerPanel::UpdateCLCS()
{
    static const QHash<QString, QString> words{ { u"0"_s, u"Combined"_s },
                                                { u"1"_s, u"Channel 1"_s },
                                                { u"2"_s, u"Channel 2"_s } };
    const QString channels = channel()->getCLCS();
    if (const auto word = words.constFind(channels); word != words.constEnd())
        showWord(ui->lblCMBmode, *word);
    else if (!ValueText::isKnown(channels))
        showWord(ui->lblCMBmode, ValueText::shown(channels));
}

void CombinerPanel::UpdateAGCAcmb()
{
    WidgetUpdate::agcLevel(ui->progBarAGCA, channel()->getAGCA(), channel()->getPOLA());
}

void CombinerPanel::UpdateAGCBcmb()
{
    WidgetUpdate::agcLevel(ui->progBarAGCB, channel()->getAGCB(), channel()->getPOLB());
}
