#include "dialogs/TapeCtrlWindow.h"

#include "controls/NumberText.h"
#include "controls/ValueText.h"
#include "controls/WheelGuard.h"
#include "controls/WidgetUpdate.h"
#include "ui_TapeCtrlWindow.h"

#include <QRegularExpression>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Commands = TapeChan::Commands;

constexpr int kFullScale = 255;

/// Of a whole number only.
QString percentage(const QString &value)
{
    const auto gain = NumberText::parseWhole(value);
    return gain ? QString::number(qint64(*gain) * 100 / kFullScale) + u" %"_s : ValueText::shown(value);
}

bool isFrequency(const QString &typed)
{
    static const QRegularExpression kFrequency(u"^\\s*(\\d+([.,]\\d*)?|[.,]\\d+)\\s*[kKmM]?\\s*$"_s,
                                               QRegularExpression::DontCaptureOption);
    return kFrequency.match(typed).hasMatch();
}

} // namespace

TapeCtrlWindow::TapeCtrlWindow(QWidget *parent, TapeChan *channel, bool *open)
    : EntryDialog(parent)
    , ui(std::make_unique<Ui::TapeCtrlWindow>())
    , m_channel(channel)
    , m_open(open)
    , m_focusReturn(this)
{
    ui->setupUi(this);
    *m_open = true;
    createGains();
    DisplayTapeFreq(m_channel->getTFREQ());
    for (const Gain &gain : std::as_const(m_gains))
        DisplayTapeGain(gain.which, (m_channel->*gain.get)());
    connectControls();
    WheelGuard::protect(this);
    m_focusReturn.setHolder(ui->lblTapeFreqtape1);
    m_focusReturn.giveBack();
}

TapeCtrlWindow::~TapeCtrlWindow() { *m_open = false; }

void TapeCtrlWindow::createGains()
{
    using T = TapeChan;
    using W = TapeCtrlWindow;
    m_gains = {
        { u"1"_s, ui->sldrTapeGainCH1tape1, ui->lblTapeGainCH1Valtape1, Commands::TGAINCH1, &T::getTGAINCH1,
          &T::setTGAINCH1, &W::sldrTGAINCH1_valueChanged },
        { u"2"_s, ui->sldrTapeGainCH2tape1, ui->lblTapeGainCH2Valtape1, Commands::TGAINCH2, &T::getTGAINCH2,
          &T::setTGAINCH2, &W::sldrTGAINCH2_valueChanged },
        { u"0"_s, ui->sldrTapeGainCMB1tape1, ui->lblTapeGainCMB1Valtape1, Commands::TGAINCMB, &T::getTGAINCMB,
          &T::setTGAINCMB, &W::sldrTGAINCMB_valueChanged },
    };
}

void TapeCtrlWindow::connectControls()
{
    connect(ui->lineTapeFreqtape1, &QLineEdit::returnPressed, this, &TapeCtrlWindow::lineTFREQ_returnPressed);
    connect(ui->lineTapeFreqtape1, &QLineEdit::textEdited, this, &TapeCtrlWindow::lineTFREQ_textEdited);
    for (const Gain &gain : std::as_const(m_gains))
        connect(gain.slider, &QSlider::valueChanged, this, gain.moved);
    connect(ui->btnClosetape1, &QPushButton::clicked, this, &QWidget::close);
    connect(&m_focusReturn, &FocusReturn::restoreDue, this, &TapeCtrlWindow::restoreFrequency);
    connect(m_channel, &Channel::SettingChanged, this, &TapeCtrlWindow::UpdateSetting, Qt::QueuedConnection);
}

// What the operator does

void TapeCtrlWindow::lineTFREQ_returnPressed()
{
    m_focusReturn.stop();
    const QString typed = ui->lineTapeFreqtape1->text();
    // A text that is no number is given up: it would tune the tape to 0 Hz.
    const bool isEntry = ui->lineTapeFreqtape1->isModified() && isFrequency(typed);
    if (isEntry)
        m_channel->setTFREQ(QString::number(NumberText::parseScaled(typed), 'f', 0));
    ui->lineTapeFreqtape1->setModified(false);
    if (!isEntry || !m_channel->isSetPending(Commands::TFREQ))
        DisplayTapeFreq(m_channel->getTFREQ());
    m_focusReturn.giveBack();
}

void TapeCtrlWindow::restoreFrequency()
{
    if (!ui->lineTapeFreqtape1->isModified())
        return;
    ui->lineTapeFreqtape1->setModified(false);
    DisplayTapeFreq(m_channel->getTFREQ());
}

void TapeCtrlWindow::sldrTGAINCH1_valueChanged(int value) { sendGain(ui->sldrTapeGainCH1tape1, value); }

void TapeCtrlWindow::sldrTGAINCH2_valueChanged(int value) { sendGain(ui->sldrTapeGainCH2tape1, value); }

void TapeCtrlWindow::sldrTGAINCMB_valueChanged(int value) { sendGain(ui->sldrTapeGainCMB1tape1, value); }

void TapeCtrlWindow::sendGain(const QSlider *slider, int value)
{
    m_focusReturn.start();
    for (const Gain &gain : std::as_const(m_gains)) {
        if (gain.slider != slider)
            continue;
        (m_channel->*gain.set)(QString::number(value));
        WidgetUpdate::text(gain.label, percentage(QString::number(value)));
    }
}

// What the card confirms

void TapeCtrlWindow::UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                                   const QString &FailedData)
{
    Q_UNUSED(Module)
    Q_UNUSED(CmdFailed)
    Q_UNUSED(FailedData)
    if (m_channel->isSetPending(Cmd))
        return;
    if (Cmd == Commands::TFREQ)
        DisplayTapeFreq(Data);
    for (const Gain &gain : std::as_const(m_gains)) {
        if (Cmd == gain.mnemonic)
            DisplayTapeGain(gain.which, Data);
    }
}

void TapeCtrlWindow::DisplayTapeFreq(const QString &value)
{
    ui->lineTapeFreqtape1->showText(ValueText::shown(NumberText::scaled(value)));
}

void TapeCtrlWindow::DisplayTapeGain(const QString &which, const QString &value)
{
    for (const Gain &gain : std::as_const(m_gains)) {
        if (gain.which != which)
            continue;
        gain.slider->showValue(value);
        WidgetUpdate::text(gain.label, percentage(value));
    }
}
