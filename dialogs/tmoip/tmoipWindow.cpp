#include "dialogs/tmoip/tmoipWindow.h"

#include "channels/TmoipChan.h"
#include "controls/OutsideClick.h"
#include "controls/WheelGuard.h"
#include "controls/WidgetUpdate.h"
#include "dialogs/tmoip/TmoipEntry.h"
#include "dialogs/tmoip/tmipPCM.h"
#include "ui_tmoipWindow.h"

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
    m_settings.fill();
    UpdateAllDynamicParamsTmr_Tick();
    WheelGuard::protect(this);
    ui->lblTitle->setFocus(); // else the first field would have it

    ui->btnClose->setFocusPolicy(Qt::TabFocus); // a click gives up a half-typed text instead of committing it
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
    add(Commands::ADDR, &C::getADDR, &C::setADDR, ui->txtADDR, u"Invalid Address"_s);
    add(Commands::MASK, &C::getMASK, &C::setMASK, ui->txtMASK, u"Invalid Mask"_s);
    add(Commands::GWAY, &C::getGWAY, &C::setGWAY, ui->txtGWAY, u"Invalid Gateway"_s);
    m_settings.add(Commands::TSRC, m_card, &C::getTSRC, [this](const QString &v) { updateTSRC(v); });
    addStatus(Commands::TIME, &C::getTIME, ui->txtTIME);
    addStatus(Commands::IRIG, &C::getIRIG, ui->txtIRIG);
    addStatus(Commands::PHYS, &C::getPHYS, ui->txtPHYS);
    addStatus(Commands::IEBS, &C::getIEBS, ui->txtIEBS);
    addStatus(Commands::IEBR, &C::getIEBR, ui->txtIEBR);
    const auto channels = m_card->tmoipChanSlots();
    m_streams = {
        { channels.value(u"1"_s), ui->txtPCM1Rate, ui->txtPCM1Status, ui->ledCH1 },
        { channels.value(u"2"_s), ui->txtPCM2Rate, ui->txtPCM2Status, ui->ledCH2 },
        { channels.value(u"3"_s), ui->txtPCM3Rate, ui->txtPCM3Status, ui->ledCH3 },
    };
}

void tmoipWindow::add(QLatin1StringView mnemonic, Get get, Set set, ValueEdit *line, const QString &complaint)
{
    const EntryField field = EntryField::of(line, m_card, mnemonic, get, &TmoipEntry::whole);
    m_addresses.insert(mnemonic, { field, set, complaint });
    m_settings.add(mnemonic, m_card, get, [field](const QString &value) { field.show(value); });
}

void tmoipWindow::addStatus(QLatin1StringView mnemonic, Get get, ValueEdit *line)
{
    m_statuses.add(mnemonic, m_card, get, [line](const QString &value) { line->showText(TmoipEntry::whole(value)); });
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
    for (const Address &address : std::as_const(m_addresses))
        address.field.giveUp();
    for (tmipPCM *page : std::as_const(m_pages))
        page->discardEntries();
}

// Handlers

void tmoipWindow::on_btnCommit_clicked() { m_card->setCOMT(u"1"_s); }

void tmoipWindow::on_cmbTSRC_currentIndexChanged(int index) { m_card->setTSRC(QString::number(index)); }

void tmoipWindow::on_txtADDR_editingFinished() { commit(m_addresses[Commands::ADDR]); }

void tmoipWindow::on_txtMASK_editingFinished() { commit(m_addresses[Commands::MASK]); }

void tmoipWindow::on_txtGWAY_editingFinished() { commit(m_addresses[Commands::GWAY]); }

void tmoipWindow::commitEntries()
{
    for (const QLatin1StringView mnemonic : { Commands::ADDR, Commands::MASK, Commands::GWAY })
        commit(m_addresses[mnemonic]);
    for (tmipPCM *page : std::as_const(m_pages))
        page->commitEntries();
}

void tmoipWindow::commit(const Address &address)
{
    if (const auto typed = TmoipEntry::take(address.field, address.complaint))
        (m_card->*address.set)(*typed);
    address.field.end();
}

// Reports

void tmoipWindow::UpdateSettings(const QString &Module, const QString &Cmd, const QString &Data)
{
    const QString target = Module.section(u'-', 1);
    if (target == "0"_L1 && !m_card->isSetPending(Cmd)) {
        m_settings.show(Cmd, Data);
        m_statuses.show(Cmd, Data);
    }
    for (Stream &stream : m_streams) {
        if (target == stream.channel->getChannel() && !stream.channel->isSetPending(Cmd))
            updateStream(stream, Cmd, Data);
    }
}

void tmoipWindow::updateTSRC(const QString &value) { ui->cmbTSRC->showPosition(value); }

void tmoipWindow::updateStream(Stream &stream, const QString &Cmd, const QString &Data)
{
    using C = TmoipChan::Commands;
    if (Cmd == C::STAT)
        updateStatus(stream, Data);
    else if (Cmd == C::RATE)
        stream.rate->showText(TmoipEntry::whole(Data));
    else if (Cmd == C::FLOW)
        setFlow(Data, stream.isFlowing); // the lamp follows at the next refresh
}

void tmoipWindow::updateStatus(const Stream &stream, const QString &status)
{
    stream.status->showText(TmoipEntry::whole(status));
    const bool isWell = status.contains("Ok"_L1) || status.contains("Transmitting"_L1);
    stream.led->setColor(!stream.isFlowing ? u"Black"_s : isWell ? u"Green"_s : u"Red"_s);
}

void tmoipWindow::UpdateAllDynamicParamsTmr_Tick()
{
    m_statuses.fill();
    for (const Stream &stream : std::as_const(m_streams)) {
        stream.rate->showText(TmoipEntry::whole(stream.channel->getRATE()));
        updateStatus(stream, stream.channel->getSTAT());
    }
}
