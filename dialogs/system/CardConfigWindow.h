#pragma once

#include <QDialog>
#include <QStringList>

/// Lists the cards that the chassis reported. Deletes itself when closed.
class CardConfigWindow : public QDialog
{
    Q_OBJECT

public:
    /// @param cards one text for each card
    /// @param open  the opener's flag, cleared when the window is deleted; outlives it
    CardConfigWindow(const QStringList &cards, QWidget *parent, bool *open);
    ~CardConfigWindow() override;

private:
    bool *m_open;
};
