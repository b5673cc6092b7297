#pragma once

#include <QMessageBox>

/// A box that names the error of an entry.
namespace RefusalBox {

/// Opens a box that blocks @p window only. The window may be deleted meanwhile.
void open(QMessageBox::Icon icon, const QString &title, const QString &text, QWidget *window);

} // namespace RefusalBox
