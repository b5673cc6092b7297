#pragma once

#include <QMessageBox>

/// Tells what is wrong with an entry.
namespace RefusalBox {

/// Opens a box that bars @p window and blocks nothing else: the window may go meanwhile.
void open(QMessageBox::Icon icon, const QString &title, const QString &text, QWidget *window);

} // namespace RefusalBox
