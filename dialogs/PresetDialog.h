#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>

class QListWidgetItem;
class QListWidgetPresets;
class QPushButton;
class SerialPortController;

/// What the dialogs on the chassis' presets share: the list of names, the chosen name, and a button that acts on it.
///
/// A chosen name is acted on at most once, then the dialog closes; nobody waits for the answer. Delete removes a
/// preset from the chassis at once and leaves the dialog open. The slots run from the event loop, when the item that
/// a signal told of may be gone; so they are given the current one.
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
        QString mnemonic; ///< of the request that the button makes
    };

    /// @param link outlives the dialog
    PresetDialog(const Texts &texts, SerialPortController *link, const QStringList &names, QWidget *parent);

    /// Builds the dialog around the widget that holds the chosen name; once, by the subclass' constructor.
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

    SerialPortController *m_link;
    const QString m_mnemonic;
    QListWidgetPresets *m_list;
    QPushButton *m_button;
    bool m_done = false; ///< what is still queued behind the closing comes too late
};
