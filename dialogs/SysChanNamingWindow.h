#pragma once

#include "inventory/ChannelDirectory.h"

#include <QDialog>
#include <QList>

#include <memory>

class Channel;
class QLabel;
class QLineEdit;
class SerialPortController;

namespace Ui {
class SysChanNamingWindow;
}

/// Lets the operator rename the system and its channels. Deletes itself when closed.
class SysChanNamingWindow : public QDialog
{
    Q_OBJECT

public:
    /// @param controller the link whose channels are named; outlives the window
    /// @param open       the opener's flag, cleared when the window is gone; outlives it
    SysChanNamingWindow(QWidget *parent, SerialPortController *controller, bool *open);
    ~SysChanNamingWindow() override;

public Q_SLOTS:
    /// Asks for every name that differs from the one in force, and closes. An emptied field changes nothing.
    void btnSAVE_clicked();
    void btnCancel_clicked();

private:
    struct Row
    {
        QLabel *label;
        QLineEdit *line;
        Channel *channel; ///< null if the chassis has none
    };

    void createRows();
    void showNames();
    template <typename C>
    [[nodiscard]] Channel *channel(qsizetype index) const
    {
        return m_directory.all<C>().value(index);
    }

    std::unique_ptr<Ui::SysChanNamingWindow> ui;
    ChannelDirectory m_directory;
    QList<Row> m_rows; ///< from top to bottom
    bool *m_open;
};
