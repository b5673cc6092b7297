#include "dialogs/system/TapeCtrlWindow.h"

#include "controls/NumberText.h"
#include "controls/ValueText.h"
#include "controls/WheelGuard.h"
#include "controls/WidgetUpdate.h"
#include "ui_TapeCtrlWindow.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Commands = TapeChan::Commands;

constexpr int kFullScale = 255;

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
    createTable();
    m_settings.fill();
    connectControls();
    WheelGuard::protect(this);
    m_focusReturn.setHolder(ui->lblTapeFreqtape1);
    m_focusReturn.giveBack();
}

TapeCtrlWindow::~TapeCtrlWindow() { *m_open = false; }

void TapeCtrlWindow::createTable()
{
    using T = TapeChan;
    m_gains = {
        { u"1"_s, ui->sldrTapeGainCH1tape1, ui->lblTapeGainCH1Valtape1, &T::setTGAINCH1 },
        { u"2"_s, ui->sldrTapeGainCH2tape1, ui->lblTapeGainCH2Valtape1, &T::setTGAINCH2 },
        { u"0"_s, ui->sldrTapeGainCMB1tape1, ui->lblTapeGainCMB1Valtape1, &T::setTGAINCMB },
    };
    m_frequency =
        EntryField::of(ui->lineTapeFreqtape1, m_channel, Commands::TFREQ, &T::getTFREQ,
                       [](const QString &frequency) { return ValueText::shown(NumberText::scaled(frequency)); });
    const auto add = [this](QLatin1StringView mnemonic, auto get, auto show) {
        m_settings.add(mnemonic, m_channel, get, show);
    };
    add(Commands::TFREQ, &T::getTFREQ, [this](const QString &v) { DisplayTapeFreq(v); });
    add(Commands::TGAINCH1, &T::getTGAINCH1, [this](const QString &v) { DisplayTapeGain(u"1"_s, v); });
    add(Commands::TGAINCH2, &T::getTGAINCH2, [this](const QString &v) { DisplayTapeGain(u"2"_s, v); });
    add(Commands::TGAINCMB, &T::getTGAINCMB, [this](const QString &v) { DisplayTapeGain(u"0"_s, v); });
}

void TapeCtrlWindow::connectControls()
{
    using W = TapeCtrlWindow;
    connect(ui->lineTapeFreqtape1, &QLineEdit::returnPressed, this, &W::lineTFREQ_returnPressed);
    connect(ui->lineTapeFreqtape1, &QLineEdit::textEdited, this, &W::lineTFREQ_textEdited);
    connect(ui->sldrTapeGainCH1tape1, &QSlider::valueChanged, this, &W::sldrTGAINCH1_valueChanged);
    connect(ui->sldrTapeGainCH2tape1, &QSlider::valueChanged, this, &W::sldrTGAINCH2_valueChanged);
    connect(ui->sldrTapeGainCMB1tape1, &QSlider::valueChanged, this, &W::sldrTGAINCMB_valueChanged);
    connect(ui->btnClosetape1, &QPushButton::clicked, this, &QWidget::close);
    connect(&m_focusReturn, &FocusReturn::restoreDue, this, [this] { m_frequency.giveUp(); });
    connect(m_channel, &Channel::SettingChanged, this, &W::UpdateSetting, Qt::QueuedConnection);
}

void TapeCtrlWindow::lineTFREQ_returnPressed()
{
    m_focusReturn.stop();
    const QString typed = m_frequency.text();
    // Any other text is given up: it would tune the tape to 0 Hz.
    const bool isEntry = m_frequency.isTyped() && isFrequency(typed);
    if (isEntry)
        m_channel->setTFREQ(QString::number(NumberText::parseScaled(typed), 'f', 0));
    m_frequency.end(!isEntry);
    m_focusReturn.giveBack();
}

void TapeCtrlWindow::sendGain(const QString &which, int value)
{
    m_focusReturn.start();
    const Gain &gain = this->gain(which);
    (m_channel->*gain.set)(QString::number(value));
    WidgetUpdate::text(gain.label, ValueText::percentage(QString::number(value), kFullScale));
}

void TapeCtrlWindow::UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                                   const QString &FailedData)
{
    Q_UNUSED(Module)
    Q_UNUSED(CmdFailed)
    Q_UNUSED(FailedData)
    if (!m_channel->isSetPending(Cmd))
        m_settings.show(Cmd, Data);
}

void TapeCtrlWindow::DisplayTapeFreq(const QString &value) { m_frequency.show(value); }

void TapeCtrlWindow::DisplayTapeGain(const QString &which, const QString &value)
{
    const Gain &gain = this->gain(which);
    gain.slider->showValue(value);
    WidgetUpdate::text(gain.label, ValueText::percentage(value, kFullScale));
}

const TapeCtrlWindow::Gain &TapeCtrlWindow::gain(const QString &which) const
{
    return *std::ranges::find(m_gains, which, &Gain::which);
}
