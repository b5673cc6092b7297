#include "dialogs/RefusalBox.h"

void RefusalBox::open(QMessageBox::Icon icon, const QString &title, const QString &text, QWidget *window)
{
    auto *const box = new QMessageBox(icon, title, text, QMessageBox::Ok, window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QDialog::finished, window,
                     &QWidget::activateWindow); // without a window manager nothing else does
    box->open();
    box->activateWindow();
}
