#include "dialogs/tmoipWindow.h"

#include "channels/TmoipChan.h"
#include "controls/WheelGuard.h"
#include "controls/WidgetUpdate.h"
#include "dialogs/OutsideClick.h"
#include "dialogs/TmoipEntry.h"
#include "dialogs/tmipPCM.h"
#include "ui_tmoipWindow.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Commands = TmoipCard::Commands;

constexpr int kRefreshMs = 333;

} // namespace

tmoipWindow::tmoipWindow(QWidget *parent, TmoipCard *card)
    : EntryDialog(parent)
    , ui(std::make_unique<Ui::tmoipWindow>())
    , m_card(card)
{
    ui->setupUi(this);
    createTables();
    insertWidgets();
    for (const Field &field : std::as_const(m_fields))
        TmoipEntry::show(field.line, (m_card->*field.get)());
    updateTSRC(m_card->getTSRC());
    UpdateAllDynamicParamsTmr_Tick();
    WheelGuard::protect(this);
    ui->lblTitle->setFocus(); // no field is the operator's before it is touched

    ui->btnClose->setFocusPolicy(Qt::TabFocus); // a click gives up half an entry, and does not commit it
    connect(ui->btnClose, &QPushButton::clicked, this, &QWidget::close);
    connect(new OutsideClick(this), &OutsideClick::pressed, this, &tmoipWindow::commitEntries);
    connect(m_card, &Channel::SettingChanged, this, &tmoipWindow::UpdateSettings);
    m_card->RequestSettings();
    connect(&m_updateAllDynamicParamsTmr, &QTimer::timeout, this, &tmoipWindow::UpdateAllDynamicParamsTmr_Tick);
    m_updateAllDynamicParamsTmr.start(kRefreshMs);
}

tmoipWindow::~tmoipWindow() { discardEntries(); }

void tmoipWindow::createTables()
{
    using C = TmoipCard;
    m_fields = {
        { ui->txtADDR, Commands::ADDR, &C::getADDR, &C::setADDR, u"Invalid Address"_s },
        { ui->txtMASK, Commands::MASK, &C::getMASK, &C::setMASK, u"Invalid Mask"_s },
        { ui->txtGWAY, Commands::GWAY, &C::getGWAY, &C::setGWAY, u"Invalid Gateway"_s },
        { ui->txtTIME, Commands::TIME, &C::getTIME },
        { ui->txtIRIG, Commands::IRIG, &C::getIRIG },
        { ui->txtPHYS, Commands::PHYS, &C::getPHYS },
        { ui->txtIEBS, Commands::IEBS, &C::getIEBS },
        { ui->txtIEBR, Commands::IEBR, &C::getIEBR },
    };
    const auto channels = m_card->tmoipChanSlots();
    m_streams = {
        { channels.value(u"1"_s), ui->txtPCM1Rate, ui->txtPCM1Status, ui->ledCH1 },
        { channels.value(u"2"_s), ui->txtPCM2Rate, ui->txtPCM2Status, ui->ledCH2 },
        { channels.value(u"3"_s), ui->txtPCM3Rate, ui->txtPCM3Status, ui->ledCH3 },
    };
}

void tmoipWindow::insertWidgets()
{
    const QList<QWidget *> places{ ui->pagePCM1, ui->pagePCM2, ui->pagePCM3 };
    for (qsizetype i = 0; i < m_streams.size(); ++i) {
        m_pages.append(new tmipPCM(places[i], m_streams[i].channel));
        auto *const layout = new QGridLayout(places[i]);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(m_pages.back(), 0, 0);
        connect(m_streams[i].channel, &Channel::SettingChanged, this, &tmoipWindow::UpdateSettings);
    }
}

void tmoipWindow::done(int result)
{
    discardEntries();
    QDialog::done(result);
}

void tmoipWindow::discardEntries()
{
    for (const Field &field : std::as_const(m_fields))
        field.line->setModified(false);
    for (tmipPCM *page : std::as_const(m_pages))
        page->discardEntries();
}

// What the operator does

void tmoipWindow::on_btnCommit_clicked() { m_card->setCOMT(u"1"_s); }

void tmoipWindow::on_cmbTSRC_currentIndexChanged(int index) { m_card->setTSRC(QString::number(index)); }

void tmoipWindow::on_txtADDR_editingFinished() { commit(Commands::ADDR); }

void tmoipWindow::on_txtMASK_editingFinished() { commit(Commands::MASK); }

void tmoipWindow::on_txtGWAY_editingFinished() { commit(Commands::GWAY); }

void tmoipWindow::commitEntries()
{
    for (const QLatin1StringView mnemonic : { Commands::ADDR, Commands::MASK, Commands::GWAY })
        commit(mnemonic);
    for (tmipPCM *page : std::as_const(m_pages))
        page->commitEntries();
}

void tmoipWindow::commit(QLatin1StringView mnemonic)
{
    const Field &entry = field(mnemonic);
    if (const auto address = TmoipEntry::take(entry.line, (m_card->*entry.get)(), entry.complaint))
        (m_card->*entry.set)(*address);
    if (!m_card->isSetPending(mnemonic))
        TmoipEntry::show(entry.line, (m_card->*entry.get)());
}

const tmoipWindow::Field &tmoipWindow::field(QLatin1StringView mnemonic) const
{
    return *std::find_if(m_fields.begin(), m_fields.end(),
                         [mnemonic](const Field &candidate) { return candidate.mnemonic == mnemonic; });
}

// What the card confirms

void tmoipWindow::UpdateSettings(const QString &Module, const QString &Cmd, const QString &Data)
{
    const QString target = Module.section(u'-', 1);
    if (target == "0"_L1 && !m_card->isSetPending(Cmd))
        updateCard(Cmd, Data);
    for (Stream &stream : m_streams) {
        if (target == stream.channel->getChannel() && !stream.channel->isSetPending(Cmd))
            updateStream(stream, Cmd, Data);
    }
}

void tmoipWindow::updateCard(const QString &Cmd, const QString &Data)
{
    for (const Field &field : std::as_const(m_fields)) {
        if (Cmd == field.mnemonic)
            TmoipEntry::show(field.line, Data);
    }
    if (Cmd == Commands::TSRC)
        updateTSRC(Data);
}

void tmoipWindow::updateTSRC(const QString &value) { ui->cmbTSRC->showPosition(value); }

void tmoipWindow::updateStream(Stream &stream, const QString &Cmd, const QString &Data)
{
    using C = TmoipChan::Commands;
    if (Cmd == C::STAT)
        updateStatus(stream, Data);
    else if (Cmd == C::RATE)
        TmoipEntry::show(stream.rate, Data);
    else if (Cmd == C::FLOW)
        setFlow(Data, stream.isFlowing); // the lamp follows at the next refresh
}

void tmoipWindow::updateStatus(const Stream &stream, const QString &status)
{
    TmoipEntry::show(stream.status, status);
    const bool isWell = status.contains("Ok"_L1) || status.contains("Transmitting"_L1);
    stream.led->setColor(!stream.isFlowing ? u"Black"_s : isWell ? u"Green"_s : u"Red"_s);
}

void tmoipWindow::UpdateAllDynamicParamsTmr_Tick()
{
    for (const QLatin1StringView status :
         { Commands::TIME, Commands::IRIG, Commands::PHYS, Commands::IEBR, Commands::IEBS })
        TmoipEntry::show(field(status).line, (m_card->*field(status).get)());
    for (const Stream &stream : std::as_const(m_streams)) {
        TmoipEntry::show(stream.rate, stream.channel->getRATE());
        updateStatus(stream, stream.channel->getSTAT());
    }
}
