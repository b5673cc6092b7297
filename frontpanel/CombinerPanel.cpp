#include "frontpanel/CombinerPanel.h"

#include "channels/CmbrChan.h"
#include "controls/OnOff.h"
#include "controls/ValueText.h"
#include "controls/WheelGuard.h"
#include "controls/WidgetUpdate.h"
#include "ui_CombinerPanel.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

/// Shows a state and tells it to a screen reader, which knows the label by its accessible name.
void showWord(QLabel *label, const QString &word)
{
    WidgetUpdate::text(label, word);
    WidgetUpdate::description(label, word);
}

} // namespace

CombinerPanel::CombinerPanel(int number, const PanelContext &context, QWidget *parent)
    : ChannelPanel(context, parent)
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
    m_channel = channel;
    follow(channel);
    {
        const ControlGuard::Scope filling(guard());
        showParts(families);
        fill();
    }
    connectControls();
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

void CombinerPanel::fill()
{
    ui->cboIFBW->refill(m_channel->ifBandwidths());
    ui->cboVideoMode->showPosition(m_channel->getCVMD());
    ui->cboOutputMode->showPosition(m_channel->getCMOD());
    ui->cboIFBW->showPosition(m_channel->getIFBW());
    AGCZerocmb(m_channel->getCHZC());
    CH1Zero(m_channel->getCHZ1());
    CH2Zero(m_channel->getCHZ2());
    SLPAcmb(m_channel->getSLPA());
    SLPBcmb(m_channel->getSLPB());
    ui->cboPOLA->showPosition(m_channel->getPOLA());
    ui->cboPOLB->showPosition(m_channel->getPOLB());
    showName(ui->groupBoxCmbr, m_channel->getNAME());
    updateDynamicParams();
}

void CombinerPanel::connectControls()
{
    const auto onIndex = [this](QComboBox *box, void (CombinerPanel::*handler)(int)) {
        connect(box, &QComboBox::currentIndexChanged, this, handler);
    };
    onIndex(ui->cboVideoMode, &CombinerPanel::cboCVMD_currentIndexChanged);
    onIndex(ui->cboOutputMode, &CombinerPanel::cboCMOD_currentIndexChanged);
    if (!ui->cboIFBW->isHidden())
        onIndex(ui->cboIFBW, &CombinerPanel::cboIFBWcmb_currentIndexChanged);
    onRefilled(ui->cboIFBW, CmbrChan::Commands::IFBW, [this] { ui->cboIFBW->showPosition(m_channel->getIFBW()); });
    onIndex(ui->cboSLPA, &CombinerPanel::cboSLPAcmb_currentIndexChanged);
    onIndex(ui->cboSLPB, &CombinerPanel::cboSLPBcmb_currentIndexChanged);
    onIndex(ui->cboPOLA, &CombinerPanel::cboPOLAcmb_currentIndexChanged);
    onIndex(ui->cboPOLB, &CombinerPanel::cboPOLBcmb_currentIndexChanged);
    connect(ui->btnAGCZ, &QPushButton::clicked, this, &CombinerPanel::btnAGCZcmb_clicked);
    connect(ui->btnCMBZ1, &QPushButton::clicked, this, &CombinerPanel::btnCHZ1_clicked);
    connect(ui->btnCMBZ2, &QPushButton::clicked, this, &CombinerPanel::btnCHZ2_clicked);
}

void CombinerPanel::showSetting(const QString &Cmd, const QString &Data)
{
    using Commands = CmbrChan::Commands;
    using Show = void (*)(CombinerPanel &, const QString &);
    using P = CombinerPanel;
    static const QHash<QString, Show> routes{
        { Commands::CVMD, [](P &p, const QString &v) { p.ui->cboVideoMode->showPosition(v); } },
        { Commands::CMOD, [](P &p, const QString &v) { p.ui->cboOutputMode->showPosition(v); } },
        { Commands::IFLS, [](P &p, const QString &) { p.ui->cboIFBW->refill(p.m_channel->ifBandwidths()); } },
        { Commands::IFBW, [](P &p, const QString &v) { p.ui->cboIFBW->showPosition(v); } },
        { Commands::CHZC, [](P &p, const QString &v) { p.AGCZerocmb(v); } },
        { Commands::CHZ1, [](P &p, const QString &v) { p.CH1Zero(v); } },
        { Commands::CHZ2, [](P &p, const QString &v) { p.CH2Zero(v); } },
        { Commands::SLPA, [](P &p, const QString &v) { p.SLPAcmb(v); } },
        { Commands::SLPB, [](P &p, const QString &v) { p.SLPBcmb(v); } },
        { Commands::POLA, [](P &p, const QString &v) { p.ui->cboPOLA->showPosition(v); } },
        { Commands::POLB, [](P &p, const QString &v) { p.ui->cboPOLB->showPosition(v); } },
        { Commands::NAME, [](P &p, const QString &v) { p.showName(p.ui->groupBoxCmbr, v); } },
    };
    if (const Show route = routes.value(Cmd))
        route(*this, Data);
}

void CombinerPanel::showAgcLevels(bool shown)
{
    ui->progBarAGCA->setVisible(shown);
    ui->progBarAGCB->setVisible(shown);
}

// Handlers

void CombinerPanel::cboCVMD_currentIndexChanged(int index) { chooseIndex(m_channel, &CmbrChan::setCVMD, index); }

void CombinerPanel::cboCMOD_currentIndexChanged(int index) { chooseIndex(m_channel, &CmbrChan::setCMOD, index); }

void CombinerPanel::cboIFBWcmb_currentIndexChanged(int index) { chooseIndex(m_channel, &CmbrChan::setIFBW, index); }

void CombinerPanel::cboPOLAcmb_currentIndexChanged(int index) { chooseIndex(m_channel, &CmbrChan::setPOLA, index); }

void CombinerPanel::cboPOLBcmb_currentIndexChanged(int index) { chooseIndex(m_channel, &CmbrChan::setPOLB, index); }

void CombinerPanel::cboSLPAcmb_currentIndexChanged(int index)
{
    onOperatorChange([this, value = QString::number(index)] {
        WidgetUpdate::agcSlope(ui->progBarAGCA, value); // the scale follows at once
        m_channel->setSLPA(value);
    });
}

void CombinerPanel::cboSLPBcmb_currentIndexChanged(int index)
{
    onOperatorChange([this, value = QString::number(index)] {
        WidgetUpdate::agcSlope(ui->progBarAGCB, value);
        m_channel->setSLPB(value);
    });
}

void CombinerPanel::btnAGCZcmb_clicked() { toggle(ui->btnAGCZ, m_channel, m_channel->getCHZC(), &CmbrChan::setCHZC); }

void CombinerPanel::btnCHZ1_clicked() { toggle(ui->btnCMBZ1, m_channel, m_channel->getCHZ1(), &CmbrChan::setCHZ1); }

void CombinerPanel::btnCHZ2_clicked() { toggle(ui->btnCMBZ2, m_channel, m_channel->getCHZ2(), &CmbrChan::setCHZ2); }

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
    const QString locked = m_channel->getCLCK();
    const QString channels = m_channel->getCLCS();
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
    const QString channels = m_channel->getCLCS();
    if (const auto word = words.constFind(channels); word != words.constEnd())
        showWord(ui->lblCMBmode, *word);
    else if (!ValueText::isKnown(channels))
        showWord(ui->lblCMBmode, ValueText::shown(channels));
}

void CombinerPanel::UpdateAGCAcmb()
{
    WidgetUpdate::agcLevel(ui->progBarAGCA, m_channel->getAGCA(), m_channel->getPOLA());
}

void CombinerPanel::UpdateAGCBcmb()
{
    WidgetUpdate::agcLevel(ui->progBarAGCB, m_channel->getAGCB(), m_channel->getPOLB());
}
