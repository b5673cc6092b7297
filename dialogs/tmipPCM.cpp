#include "dialogs/tmipPCM.h"

#include "channels/TmoipCard.h"
#include "controls/NumberText.h"
#include "controls/ValueText.h"
#include "controls/WidgetUpdate.h"
#include "dialogs/TmoipEntry.h"
#include "ui_tmipPCM.h"

#include <QLocale>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Commands = TmoipChan::Commands;

constexpr int kRefreshMs = 333;

} // namespace

tmipPCM::tmipPCM(QWidget *parent, TmoipChan *channel)
    : QWidget(parent)
    , ui(std::make_unique<Ui::tmipPCM>())
    , m_channel(channel)
{
    ui->setupUi(this);
    createTables();
    setEnabled(m_channel);
    if (!m_channel)
        return;
    showKnown();
    for (const Number &number : std::as_const(m_numbers))
        connect(number.spin, &QSpinBox::editingFinished, this, [this, number] { endEditing(number); });
    connect(m_channel, &Channel::SettingChanged, this, &tmipPCM::UpdateSettings);
    connect(&m_updateAllDynamicParamsTmr, &QTimer::timeout, this, &tmipPCM::UpdateAllDynamicParamsTmr_Tick);
    m_updateAllDynamicParamsTmr.start(kRefreshMs);
}

tmipPCM::~tmipPCM() { discardEntries(); } // a field that goes loses the focus, which must not send half an entry

void tmipPCM::createTables()
{
    using C = TmoipChan;
    m_choices = {
        { ui->cmbHEAD, Commands::HEAD, &C::getHEAD },
        { ui->cmbBUFF, Commands::BUFF, &C::getBUFF },
        { ui->cmbPROT, Commands::PROT, &C::getPROT },
        { ui->cmbINPZ, Commands::INPZ, &C::getINPZ },
    };
    m_numbers = {
        { ui->spinPORT, Commands::PORT, &C::getPORT },
        { ui->spinMTU, Commands::MTUS, &C::getIMTU },
        { ui->spinRBUF, Commands::RBUF, &C::getRBUF },
    };
    m_statuses = {
        { ui->txtRate, Commands::RATE, &C::getRATE }, { ui->txtTXBT, Commands::TXBT, &C::getTXBT },
        { ui->txtRXBT, Commands::RXBT, &C::getRXBT }, { ui->txtRETX, Commands::RETX, &C::getRETX },
        { ui->txtDROP, Commands::DROP, &C::getDROP }, { ui->txtOOPS, Commands::OOPS, &C::getOOPS },
    };
}

void tmipPCM::showKnown()
{
    for (const Choice &choice : std::as_const(m_choices))
        display(choice, (m_channel->*choice.get)());
    for (const Number &number : std::as_const(m_numbers))
        display(number, (m_channel->*number.get)());
    TmoipEntry::show(ui->txtRMIP, m_channel->getRMIP());
    displayFlow(m_channel->getFLOW());
    UpdateAllDynamicParamsTmr_Tick();
}

void tmipPCM::discardEntries()
{
    if (!m_channel)
        return;
    ui->txtRMIP->setModified(false);
    TmoipEntry::show(ui->txtRMIP, m_channel->getRMIP());
    for (const Number &number : std::as_const(m_numbers))
        number.spin->discard();
}

void tmipPCM::commitEntries()
{
    if (!m_channel)
        return;
    on_txtRMIP_editingFinished();
    for (const Number &number : std::as_const(m_numbers)) {
        if (number.spin->isHalfTyped())
            number.spin->commit();
    }
}

// What the operator does

void tmipPCM::on_btnFLOW_clicked()
{
    const QString value = ui->btnFLOW->text() == "OFF"_L1 ? u"1"_s : u"0"_s;
    displayFlow(value);
    m_channel->setFLOW(value);
}

void tmipPCM::on_cmbPROT_currentIndexChanged(int index) { m_channel->setPROT(QString::number(index)); }

void tmipPCM::on_cmbHEAD_currentIndexChanged(int index) { m_channel->setHEAD(QString::number(index)); }

void tmipPCM::on_cmbBUFF_currentIndexChanged(int index) { m_channel->setBUFF(QString::number(index)); }

void tmipPCM::on_cmbINPZ_currentIndexChanged(int index) { m_channel->setINPZ(QString::number(index)); }

void tmipPCM::on_spinPORT_valueChanged(int value) { m_channel->setPORT(QString::number(value)); }

void tmipPCM::on_spinMTU_valueChanged(int value)
{
    Q_UNUSED(value)
    send(ui->spinMTU, 400, 1500, &TmoipChan::setIMTU, u"Invalid MTU Size (400 - 1500)"_s);
}

void tmipPCM::on_spinRBUF_valueChanged(int value)
{
    Q_UNUSED(value)
    send(ui->spinRBUF, 1, 256, &TmoipChan::setRBUF, u"Invalid Buffer Size (1 - 256)"_s);
}

void tmipPCM::send(const WholeSpinBox *spin, int lowest, int highest, Setter set, const QString &complaint)
{
    bool isWhole = false;
    const int value = spin->text().toInt(&isWhole);
    if (isWhole && value >= lowest && value <= highest)
        (m_channel->*set)(spin->text());
    else
        TmoipEntry::refuse(spin, complaint);
}

void tmipPCM::on_txtRMIP_editingFinished()
{
    if (const auto address = TmoipEntry::take(ui->txtRMIP, m_channel->getRMIP(), u"Invalid Address"_s))
        m_channel->setRMIP(*address);
    if (!m_channel->isSetPending(Commands::RMIP))
        TmoipEntry::show(ui->txtRMIP, m_channel->getRMIP());
}

/// What was reported while the operator typed shows now.
void tmipPCM::endEditing(const Number &number)
{
    if (!m_channel->isSetPending(number.mnemonic))
        display(number, (m_channel->*number.get)());
}

// What the card confirms

void tmipPCM::UpdateSettings(const QString &Module, const QString &Cmd, const QString &Data)
{
    Q_UNUSED(Module)
    if (m_channel->isSetPending(Cmd))
        return;
    for (const Choice &choice : std::as_const(m_choices)) {
        if (Cmd == choice.mnemonic)
            display(choice, Data);
    }
    for (const Number &number : std::as_const(m_numbers)) {
        if (Cmd == number.mnemonic)
            display(number, Data);
    }
    for (const Status &status : std::as_const(m_statuses)) {
        if (Cmd == status.mnemonic && Cmd != Commands::RXBT)
            TmoipEntry::show(status.line, Data);
    }
    if (Cmd == Commands::RMIP)
        TmoipEntry::show(ui->txtRMIP, Data);
    else if (Cmd == Commands::FLOW)
        displayFlow(Data);
}

void tmipPCM::display(const Choice &choice, const QString &value)
{
    const auto position = NumberText::parseWhole(value);
    if (ValueText::isKnown(value) && !(position && *position >= 0 && *position < choice.box->count()))
        choice.box->showInstead(value); // the item stays the one selected
    else
        choice.box->showPosition(value);
}

void tmipPCM::display(const Number &number, const QString &value)
{
    WholeSpinBox *const spin = number.spin;
    if (spin->isHalfTyped())
        return;
    const int whole = QLocale(QLocale::English, QLocale::UnitedStates).toInt(value);
    if (whole >= spin->minimum() && whole <= spin->maximum())
        spin->showNumber(whole);
    else
        spin->showText(ValueText::shown(value), spin->minimum());
}

void tmipPCM::displayFlow(const QString &value)
{
    bool isOn = false;
    const QString state = setFlow(value, isOn) ? u"1"_s : u"0"_s;
    WidgetUpdate::onOff(ui->btnFLOW, ValueText::isKnown(value) ? state : value);
}

void tmipPCM::UpdateAllDynamicParamsTmr_Tick()
{
    for (const Status &status : std::as_const(m_statuses))
        TmoipEntry::show(status.line, (m_channel->*status.get)());
}
