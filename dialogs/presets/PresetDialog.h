#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>

class QListWidgetItem;
class QListWidgetPresets;
class QPushButton;
class ChannelLink;

/// Base of the dialogs for the chassis' presets: the list of names, the chosen name, and a button that acts on it.
///
/// The dialog acts at most once, then closes without waiting for the answer. Delete removes a preset from the chassis
/// at once and leaves the dialog open. The slots run from the event loop, when the item of the signal may be deleted,
/// so they get the current item.
class PresetDialog : public QDialog
{
    Q_OBJECT

public Q_SLOTS:
    void listWidgetFileNames_currentItemChanged(QListWidgetItem *item);
    void listWidgetFileNames_itemDoubleClicked(QListWidgetItem *item);
    void listWidgetFileNames_DeletePressed();
    void listWidgetFileNames_EnterPressed();

protected:
    struct Texts
    {
        QString objectName;
        QString title;
        QString button;
        QString mnemonic; ///< of the request that the button sends
    };

    /// @param link outlives the dialog
    PresetDialog(const Texts &texts, ChannelLink *link, const QStringList &names, QWidget *parent);

    /// Builds the dialog around the widget with the chosen name; called once, by the subclass' constructor.
    void setUp(const QString &caption, QWidget *nameField);

    [[nodiscard]] QListWidgetPresets *list() const { return m_list; }
    [[nodiscard]] QPushButton *button() const { return m_button; }

    /// Acts on the chosen name and closes.
    void act();
    virtual void setChosenName(const QString &name) = 0;
    [[nodiscard]] virtual QString chosenName() const = 0;

    bool event(QEvent *event) override;

private:
    void connectList();
    void actOn(const QListWidgetItem *item);
    [[nodiscard]] bool canRequest() const;
    /// Sends a request about the chosen name.
    void request(const QString &mnemonic);

    ChannelLink *m_link;
    const QString m_mnemonic;
    QListWidgetPresets *m_list;
    QPushButton *m_button;
    bool m_done = false; ///< slots that are still queued do nothing
};
