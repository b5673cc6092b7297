#include "dialogs/EntryDialog.h"

#include <QKeyEvent>

EntryDialog::EntryDialog(QWidget *parent) : QDialog(parent) { setAttribute(Qt::WA_DeleteOnClose); }

void EntryDialog::keyPressEvent(QKeyEvent *event)
{
    // QDialog also looks for a default button in its open boxes: the Return that opened a box would close it.
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QDialog::keyPressEvent(event);
}
