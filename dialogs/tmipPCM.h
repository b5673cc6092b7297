#pragma once

#include "channels/TmoipChan.h"

#include <QList>
#include <QTimer>
#include <QWidget>

#include <memory>

class ChoiceBox;
class ValueEdit;
class WholeSpinBox;

namespace Ui {
class tmipPCM;
}

/// The page of one PCM stream of a TMoIP card: its settings, and counters that are refreshed every 333 ms.
class tmipPCM : public QWidget
{
    Q_OBJECT

public:
    /// @param channel outlives the page; without one the page is disabled
    tmipPCM(QWidget *parent, TmoipChan *channel);
    ~tmipPCM() override;

    /// Shows the settings in force in place of what is half-typed.
    void discardEntries();
    /// Ends what is half-typed as Return does.
    void commitEntries();

public Q_SLOTS:
    void on_btnFLOW_clicked();
    void on_cmbPROT_currentIndexChanged(int index);
    void on_cmbHEAD_currentIndexChanged(int index);
    void on_cmbBUFF_currentIndexChanged(int index);
    void on_cmbINPZ_currentIndexChanged(int index);
    void on_spinPORT_valueChanged(int value);
    void on_spinMTU_valueChanged(int value);
    void on_spinRBUF_valueChanged(int value);
    void on_txtRMIP_editingFinished();
    /// Shows a setting in force, unless a newer one still waits for its answer. Other settings are ignored.
    void UpdateSettings(const QString &Module, const QString &Cmd, const QString &Data);
    void UpdateAllDynamicParamsTmr_Tick();

private:
    using Getter = QString (TmoipChan::*)() const;
    using Setter = void (TmoipChan::*)(const QString &);

    /// A setting that the operator chooses from a list.
    struct Choice
    {
        ChoiceBox *box;
        QLatin1StringView mnemonic;
        Getter get;
    };
    /// A whole number that the operator types.
    struct Number
    {
        WholeSpinBox *spin;
        QLatin1StringView mnemonic;
        Getter get;
    };
    /// A text that the card reports.
    struct Status
    {
        ValueEdit *line;
        QLatin1StringView mnemonic;
        Getter get;
    };

    void createTables();
    void showKnown();
    void send(const WholeSpinBox *spin, int lowest, int highest, Setter set, const QString &complaint);
    void endEditing(const Number &number);
    static void display(const Choice &choice, const QString &value);
    static void display(const Number &number, const QString &value);
    void displayFlow(const QString &value);

    std::unique_ptr<Ui::tmipPCM> ui;
    TmoipChan *m_channel;
    QList<Choice> m_choices;
    QList<Number> m_numbers;
    QList<Status> m_statuses;
    QTimer m_updateAllDynamicParamsTmr;
};
