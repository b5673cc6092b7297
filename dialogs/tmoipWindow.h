#pragma once

#include "channels/TmoipCard.h"
#include "dialogs/EntryDialog.h"

#include <QList>
#include <QTimer>

#include <memory>

class ValueEdit;
class ledwidget;
class tmipPCM;

namespace Ui {
class tmoipWindow;
}

/// The settings of a TMoIP card, the state of its three streams at a glance, and a page for each of them.
///
/// Network settings are sent as they are typed and count once they are committed. Status is refreshed every 333 ms. The
/// window deletes itself when closed.
class tmoipWindow : public EntryDialog
{
    Q_OBJECT

public:
    /// @param card outlives the window
    tmoipWindow(QWidget *parent, TmoipCard *card);
    ~tmoipWindow() override;

    /// Closes the window; what is half-typed is not sent.
    void done(int result) override;

public Q_SLOTS:
    void on_btnCommit_clicked();
    void on_cmbTSRC_currentIndexChanged(int index);
    void on_txtADDR_editingFinished();
    void on_txtMASK_editingFinished();
    void on_txtGWAY_editingFinished();
    /// Shows a setting in force of the card or of a stream, unless a newer one still waits for its answer.
    void UpdateSettings(const QString &Module, const QString &Cmd, const QString &Data);
    void UpdateAllDynamicParamsTmr_Tick();

private:
    using Getter = QString (TmoipCard::*)() const;
    using Setter = void (TmoipCard::*)(const QString &);

    /// A text of the card.
    struct Field
    {
        ValueEdit *line;
        QLatin1StringView mnemonic;
        Getter get;
        Setter set = nullptr;   ///< of one that the operator may type
        QString complaint = {}; ///< about what is no address
    };
    /// What the overview shows of a stream.
    struct Stream
    {
        TmoipChan *channel;
        ValueEdit *rate;
        ValueEdit *status;
        ledwidget *led;
        bool isFlowing = false; ///< as the card has reported since the window opened
    };

    void createTables();
    void insertWidgets();
    void commit(QLatin1StringView mnemonic);
    void commitEntries();
    [[nodiscard]] const Field &field(QLatin1StringView mnemonic) const;
    void discardEntries();
    void updateCard(const QString &Cmd, const QString &Data);
    void updateStream(Stream &stream, const QString &Cmd, const QString &Data);
    void updateTSRC(const QString &value);
    static void updateStatus(const Stream &stream, const QString &status);

    std::unique_ptr<Ui::tmoipWindow> ui;
    TmoipCard *m_card;
    QList<Field> m_fields;
    QList<Stream> m_streams;
    QList<tmipPCM *> m_pages;
    QTimer m_updateAllDynamicParamsTmr;
};
