#include "dialogs/system/SysChanNamingWindow.h"

#include "channels/CmbrChan.h"
#include "channels/DmdChan.h"
#include "channels/RcvrChan.h"
#include "channels/UniversalChan.h"
#include "controls/NameValidator.h"
#include "dialogs/RefusalBox.h"
#include "link/ChannelLink.h"
#include "ui_SysChanNamingWindow.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int kReadBackMs = 3000;

} // namespace

SysChanNamingWindow::SysChanNamingWindow(QWidget *parent, ChannelLink *controller, bool *open)
    : QDialog(parent)
    , ui(std::make_unique<Ui::SysChanNamingWindow>())
    , m_open(open)
{
    ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    m_directory.assign(controller->channels());
    createRows();
    showNames();
    m_readBackTmr.setSingleShot(true);
    connect(&m_readBackTmr, &QTimer::timeout, this, &SysChanNamingWindow::endSaving);
    connect(ui->btnSAVE, &QPushButton::clicked, this, &SysChanNamingWindow::btnSAVE_clicked, Qt::QueuedConnection);
    connect(ui->btnCancel, &QPushButton::clicked, this, &SysChanNamingWindow::btnCancel_clicked, Qt::QueuedConnection);
}

SysChanNamingWindow::~SysChanNamingWindow() { *m_open = false; }

void SysChanNamingWindow::createRows()
{
    m_rows = {
        { ui->lblSysName, ui->lineSysName, channel<UniversalChan>(0) },
        { ui->lblRcv1Name, ui->lineRcv1Name, channel<RcvrChan>(0) },
        { ui->lblRcv2Name, ui->lineRcv2Name, channel<RcvrChan>(1) },
        { ui->lblCmb1Name, ui->lineCmb1Name, channel<CmbrChan>(0) },
        { ui->lblDmd1Name, ui->lineDmd1Name, channel<DmdChan>(0) },
        { ui->lblDmd2Name, ui->lineDmd2Name, channel<DmdChan>(1) },
        { ui->lblDmd3Name, ui->lineDmd3Name, channel<DmdChan>(2) },
    };
}

void SysChanNamingWindow::showNames()
{
    auto *const validator = new NameValidator(NameValidator::Blanks::Allowed, this);
    for (const Row &row : std::as_const(m_rows)) {
        row.label->setVisible(row.channel);
        row.line->setVisible(row.channel);
        if (row.channel)
            row.line->setText(row.channel->getNAME());
        row.line->setValidator(validator);
        if (row.channel)
            connect(row.channel, &Channel::SettingChanged, this, &SysChanNamingWindow::endSaving, Qt::QueuedConnection);
    }
}

void SysChanNamingWindow::btnSAVE_clicked()
{
    if (!isVisible() || m_isSaving) // a second click, queued behind the first
        return;
    for (const Row &row : std::as_const(m_rows)) {
        if (row.isNamed())
            row.channel->setNAME(row.line->text());
    }
    setSaving(true);
    m_readBackTmr.start(kReadBackMs);
    endSaving();
}

/// A name that is typed meanwhile would be taken for one that was sent.
void SysChanNamingWindow::setSaving(bool isSaving)
{
    m_isSaving = isSaving;
    for (const Row &row : std::as_const(m_rows))
        row.line->setReadOnly(isSaving);
}

/// Whether the outcome of a name is still open.
bool SysChanNamingWindow::isAwaited(const Row &row) const
{
    if (!row.channel)
        return false;
    const bool isReadBack =
        m_readBackTmr.isActive() && !row.channel->link()->isStale() && row.channel->isInDoubt(Channel::Commands::NAME);
    return row.channel->isSetPending(Channel::Commands::NAME) || isReadBack;
}

void SysChanNamingWindow::endSaving()
{
    if (!m_isSaving || std::ranges::any_of(m_rows, [this](const Row &row) { return isAwaited(row); }))
        return;
    setSaving(false);
    QStringList refused;
    for (const Row &row : std::as_const(m_rows)) {
        if (row.isNamed() && row.channel->getNAME() != row.line->text())
            refused += row.label->text();
    }
    if (refused.isEmpty())
        close();
    else
        RefusalBox::open(QMessageBox::Warning, windowTitle(), u"The chassis did not accept:\n"_s + refused.join(u'\n'),
                         this);
}

bool SysChanNamingWindow::Row::isNamed() const
{
    return channel && !line->text().isEmpty(); // a set without data would be a query
}

void SysChanNamingWindow::btnCancel_clicked() { close(); }
