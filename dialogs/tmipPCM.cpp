#include "dialogs/tmipPCM.h"

#include "channels/TmoipCard.h"
#include "controls/WidgetUpdate.h"
#include "dialogs/TmoipEntry.h"
#include "ui_tmipPCM.h"

#include <QLocale>
#include <QSignalBlocker>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Commands = TmoipChan::Commands;

constexpr int kRefreshMs = 333;

QLineEdit *lineOf(const QSpinBox *spin) { return spin->findChild<QLineEdit *>(); }

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
    for (const Number &number : std::as_const(m_numbers)) {
        if (TmoipEntry::isKnown((m_channel->*number.get)()))
            display(number, (m_channel->*number.get)());
    }
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
    for (const Number &number : std::as_const(m_numbers)) {
        const QSignalBlocker showing(number.spin);
        if (lineOf(number.spin)->isModified())
            lineOf(number.spin)->setText(QString::number(number.spin->value()));
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

void tmipPCM::on_spinPORT_valueChanged(int value)
{
    if (isOperators(ui->spinPORT))
        m_channel->setPORT(QString::number(value));
}

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

void tmipPCM::send(const QSpinBox *spin, int lowest, int highest, Setter set, const QString &complaint)
{
    if (!isOperators(spin))
        return;
    bool isWhole = false;
    const int value = spin->text().toInt(&isWhole);
    if (isWhole && value >= lowest && value <= highest)
        (m_channel->*set)(spin->text());
    else
        TmoipEntry::refuse(spin, complaint);
}

/// A window that loses the keyboard to a box takes half an entry for a whole one; it is given up instead.
bool tmipPCM::isOperators(const QSpinBox *spin)
{
    if (isActiveWindow())
        return true;
    for (const Number &number : std::as_const(m_numbers)) {
        lineOf(number.spin)->setModified(false);
        if (number.spin == spin)
            display(number, (m_channel->*number.get)());
    }
    return false;
}

void tmipPCM::on_txtRMIP_editingFinished()
{
    if (const auto address = TmoipEntry::take(ui->txtRMIP, m_channel->getRMIP(), u"Invalid Address"_s))
        m_channel->setRMIP(*address);
    if (!m_channel->isSetPending(Commands::RMIP))
        TmoipEntry::show(ui->txtRMIP, m_channel->getRMIP());
}

/// The text is no longer the operator's; what was reported meanwhile shows now.
void tmipPCM::endEditing(const Number &number)
{
    lineOf(number.spin)->setModified(false);
    const QString held = (m_channel->*number.get)();
    if (TmoipEntry::isKnown(held) && !m_channel->isSetPending(number.mnemonic))
        display(number, held);
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
    const QSignalBlocker showing(choice.box);
    if (TmoipEntry::isKnown(value))
        WidgetUpdate::index(choice.box, value);
    else
        choice.box->setCurrentIndex(-1);
}

void tmipPCM::display(const Number &number, const QString &value)
{
    if (lineOf(number.spin)->isModified())
        return;
    const int whole = QLocale(QLocale::English, QLocale::UnitedStates).toInt(value);
    const bool fits = whole >= number.spin->minimum() && whole <= number.spin->maximum();
    const QSignalBlocker showing(number.spin);
    number.spin->setValue(fits ? whole : number.spin->minimum());
}

void tmipPCM::displayFlow(const QString &value)
{
    bool isOn = false;
    WidgetUpdate::onOff(ui->btnFLOW, setFlow(value, isOn) ? u"1"_s : u"0"_s);
}

void tmipPCM::UpdateAllDynamicParamsTmr_Tick()
{
    for (const Status &status : std::as_const(m_statuses))
        TmoipEntry::show(status.line, (m_channel->*status.get)());
}
