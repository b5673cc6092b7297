#include "dialogs/demodulator/EyeConstWindow.h"

#include "channels/DmdChan.h"
#include "controls/ChoiceBox.h"
#include "controls/NumberText.h"
#include "controls/WheelGuard.h"

#include <QGridLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

EyeConstWindow::EyeConstWindow(QWidget *parent, DmdChan *channel, bool *open)
    : QDialog(parent)
    , m_channel(channel)
    , m_open(open)
    , m_cboMode(new ChoiceBox(this))
{
    setObjectName(u"EyeConstWindow"_s);
    resize(400, 300);
    setWindowTitle(u"(DMD.%1) Eye/Const/SDI"_s.arg(channel->getChannel()));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setAttribute(Qt::WA_DeleteOnClose);
    *m_open = true;

    m_cboMode->setObjectName(u"cboMode"_s);
    m_cboMode->setAccessibleName(u"Eye output"_s);
    m_cboMode->addItems({ u"Off"_s, u"Constellation"_s, u"Eye Pattern"_s, u"SDI"_s });
    auto *const layout = new QGridLayout(this);
    layout->setRowStretch(0, 1);
    layout->setColumnStretch(0, 1);
    layout->addWidget(m_cboMode, 1, 0);
    WheelGuard::protect(this);

    DisplayMode(channel->getDSDM());
    connect(m_cboMode, &QComboBox::currentIndexChanged, this, &EyeConstWindow::cboMode_currentIndexChanged);
    connect(channel, &Channel::SettingChanged, this, &EyeConstWindow::UpdateSetting, Qt::QueuedConnection);
}

EyeConstWindow::~EyeConstWindow() { *m_open = false; }

void EyeConstWindow::DisplayMode(const QString &value)
{
    const auto mode = NumberText::parseWhole(value);
    m_cboMode->showItem(mode ? std::max(*mode, 0) : -1, value);
}

void EyeConstWindow::cboMode_currentIndexChanged(int index) { m_channel->setDSDM(QString::number(index)); }

void EyeConstWindow::UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                                   const QString &FailedData)
{
    Q_UNUSED(Module)
    Q_UNUSED(CmdFailed)
    Q_UNUSED(FailedData)
    if (Cmd == DmdChan::Commands::DSDM && !m_channel->isSetPending(Cmd))
        DisplayMode(Data);
}
