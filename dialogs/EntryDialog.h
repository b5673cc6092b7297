#pragma once

#include <QDialog>

/// Base of the windows beside the main window that hold entries: Return in an entry works no button, and the window
/// deletes itself when closed.
class EntryDialog : public QDialog
{
    Q_OBJECT

protected:
    explicit EntryDialog(QWidget *parent);

    void keyPressEvent(QKeyEvent *event) override;
};
