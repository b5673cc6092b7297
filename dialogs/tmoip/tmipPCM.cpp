#include "dialogs/tmoip/tmipPCM.h"

#include "channels/TmoipCard.h"
#include "controls/NumberText.h"
#include "controls/ValueText.h"
#include "controls/WidgetUpdate.h"
#include "dialogs/tmoip/TmoipEntry.h"
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
    setEnabled(m_channel);
    if (!m_channel)
        return;
    createTables();
    m_settings.fill();
    m_counters.fill();
    connect(m_channel, &Channel::SettingChanged, this, &tmipPCM::UpdateSettings);
    connect(&m_updateAllDynamicParamsTmr, &QTimer::timeout, this, &tmipPCM::UpdateAllDynamicParamsTmr_Tick);
    m_updateAllDynamicParamsTmr.start(kRefreshMs);
}

tmipPCM::~tmipPCM() { discardEntries(); } // a deleted field loses the focus, which must not send a half-typed text

void tmipPCM::createTables()
{
    using C = TmoipChan;
    m_remoteAddress = EntryField::of(ui->txtRMIP, m_channel, Commands::RMIP, &C::getRMIP, &TmoipEntry::whole);
    add(Commands::HEAD, &C::getHEAD, ui->cmbHEAD);
    add(Commands::BUFF, &C::getBUFF, ui->cmbBUFF);
    add(Commands::PROT, &C::getPROT, ui->cmbPROT);
    add(Commands::INPZ, &C::getINPZ, ui->cmbINPZ);
    add(Commands::PORT, &C::getPORT, ui->spinPORT);
    add(Commands::MTUS, &C::getIMTU, ui->spinMTU);
    add(Commands::RBUF, &C::getRBUF, ui->spinRBUF);
    m_settings.add(Commands::RMIP, m_channel, &C::getRMIP, [this](const QString &v) { m_remoteAddress.show(v); });
    m_settings.add(Commands::FLOW, m_channel, &C::getFLOW, [this](const QString &v) { displayFlow(v); });
    addCounter(Commands::RATE, &C::getRATE, ui->txtRate);
    addCounter(Commands::TXBT, &C::getTXBT, ui->txtTXBT);
    addCounter(Commands::RXBT, &C::getRXBT, ui->txtRXBT);
    addCounter(Commands::RETX, &C::getRETX, ui->txtRETX);
    addCounter(Commands::DROP, &C::getDROP, ui->txtDROP);
    addCounter(Commands::OOPS, &C::getOOPS, ui->txtOOPS);
}

void tmipPCM::add(QLatin1StringView mnemonic, Get get, ChoiceBox *box)
{
    m_settings.add(mnemonic, m_channel, get, [box](const QString &value) {
        const auto position = NumberText::parseWhole(value);
        if (ValueText::isKnown(value) && !(position && *position >= 0 && *position < box->count()))
            box->showInstead(value); // the selected item stays selected
        else
            box->showPosition(value);
    });
}

void tmipPCM::add(QLatin1StringView mnemonic, Get get, WholeSpinBox *spin)
{
    m_spins.append(spin);
    m_settings.add(mnemonic, m_channel, get, [spin](const QString &value) {
        const int whole = QLocale(QLocale::English, QLocale::UnitedStates).toInt(value);
        spin->showReport(whole, value, spin->minimum());
    });
    connect(spin, &QSpinBox::editingFinished, this, [this, mnemonic] { // a report may have come meanwhile
        if (!m_channel->isSetPending(mnemonic))
            m_settings.showInForce(mnemonic);
    });
}

void tmipPCM::addCounter(QLatin1StringView mnemonic, Get get, ValueEdit *line)
{
    m_counters.add(mnemonic, m_channel, get,
                   [line](const QString &value) { line->showText(TmoipEntry::whole(value)); });
}

void tmipPCM::discardEntries()
{
    if (!m_channel)
        return;
    m_remoteAddress.giveUp();
    for (WholeSpinBox *spin : std::as_const(m_spins))
        spin->discard();
}

void tmipPCM::commitEntries()
{
    if (!m_channel)
        return;
    on_txtRMIP_editingFinished();
    for (WholeSpinBox *spin : std::as_const(m_spins)) {
        if (spin->isHalfTyped())
            spin->commit();
    }
}

// Handlers

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

void tmipPCM::send(const WholeSpinBox *spin, int lowest, int highest, Set set, const QString &complaint)
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
    if (const auto address = TmoipEntry::take(m_remoteAddress, u"Invalid Address"_s))
        m_channel->setRMIP(*address);
    m_remoteAddress.end();
}

// Reports

void tmipPCM::UpdateSettings(const QString &Module, const QString &Cmd, const QString &Data)
{
    Q_UNUSED(Module)
    if (m_channel->isSetPending(Cmd))
        return;
    m_settings.show(Cmd, Data);
    if (Cmd != Commands::RXBT)
        m_counters.show(Cmd, Data);
}

void tmipPCM::displayFlow(const QString &value)
{
    bool isOn = false;
    const QString state = setFlow(value, isOn) ? u"1"_s : u"0"_s;
    WidgetUpdate::onOff(ui->btnFLOW, ValueText::isKnown(value) ? state : value);
}

void tmipPCM::UpdateAllDynamicParamsTmr_Tick() { m_counters.fill(); }
