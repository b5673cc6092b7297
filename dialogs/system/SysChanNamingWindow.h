#pragma once

#include "inventory/ChannelDirectory.h"

#include <QDialog>
#include <QList>
#include <QTimer>

#include <memory>

class Channel;
class QLabel;
class QLineEdit;
class ChannelLink;

namespace Ui {
class SysChanNamingWindow;
}

/// Lets the operator rename the system and its channels. Deletes itself when closed.
class SysChanNamingWindow : public QDialog
{
    Q_OBJECT

public:
    /// @param controller the link whose channels are named; outlives the window
    /// @param open       the opener's flag, cleared when the window is deleted; outlives it
    SysChanNamingWindow(QWidget *parent, ChannelLink *controller, bool *open);
    ~SysChanNamingWindow() override;

public Q_SLOTS:
    /// Sends every name that differs from the one in force, and closes when the chassis has accepted them all.
    /// Otherwise a box lists the names that it has not accepted, and the typed names stay. An emptied field changes
    /// nothing.
    void btnSAVE_clicked();
    void btnCancel_clicked();

private:
    struct Row
    {
        QLabel *label;
        QLineEdit *line;
        Channel *channel; ///< null if the chassis has none

        /// Whether there is a channel and a name for it.
        [[nodiscard]] bool isNamed() const;
    };

    void createRows();
    void setSaving(bool isSaving);
    void endSaving();
    [[nodiscard]] bool isAwaited(const Row &row) const;
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
    bool m_isSaving = false; ///< until every name is answered
    QTimer m_readBackTmr;    ///< time for reading back the names that were not answered
};
