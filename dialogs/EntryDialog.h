#pragma once

#include <QDialog>

/// Base of the windows with fields: Return in a field triggers no button, and the window deletes itself when closed.
class EntryDialog : public QDialog
{
    Q_OBJECT

protected:
    explicit EntryDialog(QWidget *parent);

    void keyPressEvent(QKeyEvent *event) override;
};
