#include "dialogs/EntryDialog.h"

#include <QKeyEvent>

EntryDialog::EntryDialog(QWidget *parent) : QDialog(parent) { setAttribute(Qt::WA_DeleteOnClose); }

void EntryDialog::keyPressEvent(QKeyEvent *event)
{
    // A dialog looks for a default button in the boxes it has open too: the Return that opened one would close it.
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QDialog::keyPressEvent(event);
}
