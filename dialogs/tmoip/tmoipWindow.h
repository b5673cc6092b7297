#pragma once

#include "channels/TmoipCard.h"
#include "controls/EntryField.h"
#include "controls/SettingTable.h"
#include "dialogs/EntryDialog.h"

#include <QHash>
#include <QList>
#include <QTimer>

#include <memory>

class ledwidget;
class tmipPCM;

namespace Ui {
class tmoipWindow;
}

/// The settings of a TMoIP card, the state of its three streams at a glance, and a page for each of them.
///
/// Network settings are sent as they are typed and apply once they are committed. Status is refreshed every 333 ms. The
/// window deletes itself when closed.
class tmoipWindow : public EntryDialog
{
    Q_OBJECT

public:
    /// @param card outlives the window
    tmoipWindow(QWidget *parent, TmoipCard *card);
    ~tmoipWindow() override;

    /// Closes the window; a half-typed text is not sent.
    void done(int result) override;

public Q_SLOTS:
    void on_btnCommit_clicked();
    void on_cmbTSRC_currentIndexChanged(int index);
    void on_txtADDR_editingFinished();
    void on_txtMASK_editingFinished();
    void on_txtGWAY_editingFinished();
    /// Shows a setting in force of the card or of a stream unless a change of it still waits for its answer.
    void UpdateSettings(const QString &Module, const QString &Cmd, const QString &Data);
    void UpdateAllDynamicParamsTmr_Tick();

private:
    using Get = QString (TmoipCard::*)() const;
    using Set = void (TmoipCard::*)(const QString &);

    /// A network setting that the operator may type.
    struct Address
    {
        EntryField field;
        Set set;
        QString complaint; ///< about any other text
    };
    /// What the overview shows of a stream.
    struct Stream
    {
        TmoipChan *channel;
        ValueEdit *rate;
        ValueEdit *status;
        ledwidget *led;
        bool isFlowing = false; ///< as reported since the window opened
    };

    void createTables();
    void add(QLatin1StringView mnemonic, Get get, Set set, ValueEdit *line, const QString &complaint);
    void addStatus(QLatin1StringView mnemonic, Get get, ValueEdit *line);
    void insertWidgets();
    void commit(const Address &address);
    void commitEntries();
    void discardEntries();
    static void updateStream(Stream &stream, const QString &Cmd, const QString &Data);
    void updateTSRC(const QString &value);
    static void updateStatus(const Stream &stream, const QString &status);

    std::unique_ptr<Ui::tmoipWindow> ui;
    TmoipCard *m_card;
    SettingTable m_settings;
    SettingTable m_statuses;
    QHash<QString, Address> m_addresses; ///< by mnemonic
    QList<Stream> m_streams;
    QList<tmipPCM *> m_pages;
    QTimer m_updateAllDynamicParamsTmr;
};
