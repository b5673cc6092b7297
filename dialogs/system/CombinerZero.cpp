#include "dialogs/system/CombinerZero.h"

#include "controls/WidgetUpdate.h"
#include "ui_CombinerZero.h"

#include <utility>

namespace {

void showValue(QLabel *label, const QString &value)
{
    WidgetUpdate::text(label, value);
    WidgetUpdate::description(label, value); // the caption is the accessible name
}

} // namespace

CombinerZero::CombinerZero(QWidget *parent) : QMainWindow(parent), ui(std::make_unique<Ui::CombinerZero>())
{
    ui->setupUi(this);
}

CombinerZero::~CombinerZero() = default;

void CombinerZero::setCh1In(const QString &value) { showValue(ui->lblAgcInVal_1, value); }

void CombinerZero::setCh1Out(const QString &value) { showValue(ui->lblAgcOutVal_1, value); }

void CombinerZero::setCh2In(const QString &value) { showValue(ui->lblAgcInVal_2, value); }

void CombinerZero::setCh2Out(const QString &value) { showValue(ui->lblAgcOutVal_2, value); }

void CombinerZero::setTP2(const QString &value) { showValue(ui->lblTP2Val, value); }

void CombinerZero::setTP4(const QString &value) { showValue(ui->lblTP4Val, value); }

void CombinerZero::on_btnClose_clicked()
{
    reportClosing();
    close();
}

void CombinerZero::closeEvent(QCloseEvent *event)
{
    reportClosing();
    QMainWindow::closeEvent(event);
}

void CombinerZero::reportClosing()
{
    if (!std::exchange(m_isClosingReported, true))
        Q_EMIT closePressed();
}
