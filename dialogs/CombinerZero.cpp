#include "dialogs/CombinerZero.h"

#include "ui_CombinerZero.h"

#include <utility>

CombinerZero::CombinerZero(QWidget *parent) : QMainWindow(parent), ui(std::make_unique<Ui::CombinerZero>())
{
    ui->setupUi(this);
}

CombinerZero::~CombinerZero() = default;

void CombinerZero::setCh1In(const QString &value) { ui->lblAgcInVal_1->setText(value); }

void CombinerZero::setCh1Out(const QString &value) { ui->lblAgcOutVal_1->setText(value); }

void CombinerZero::setCh2In(const QString &value) { ui->lblAgcInVal_2->setText(value); }

void CombinerZero::setCh2Out(const QString &value) { ui->lblAgcOutVal_2->setText(value); }

void CombinerZero::setTP2(const QString &value) { ui->lblTP2Val->setText(value); }

void CombinerZero::setTP4(const QString &value) { ui->lblTP4Val->setText(value); }

void CombinerZero::on_btnClose_clicked()
{
    tellOfClosing();
    close();
}

void CombinerZero::closeEvent(QCloseEvent *event)
{
    tellOfClosing();
    QMainWindow::closeEvent(event);
}

void CombinerZero::tellOfClosing()
{
    if (!std::exchange(m_closingTold, true))
        Q_EMIT closePressed();
}
