#pragma once

#include "channels/TmoipChan.h"
#include "controls/EntryField.h"
#include "controls/SettingTable.h"

#include <QList>
#include <QTimer>
#include <QWidget>

#include <memory>

class ChoiceBox;
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

    /// Shows the settings in force instead of half-typed texts.
    void discardEntries();
    /// Ends half-typed texts as Return does.
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
    /// Shows a setting in force unless a change of it still waits for its answer. Other settings are ignored.
    void UpdateSettings(const QString &Module, const QString &Cmd, const QString &Data);
    void UpdateAllDynamicParamsTmr_Tick();

private:
    using Get = QString (TmoipChan::*)() const;
    using Set = void (TmoipChan::*)(const QString &);

    void createTables();
    void add(QLatin1StringView mnemonic, Get get, ChoiceBox *box);
    void add(QLatin1StringView mnemonic, Get get, WholeSpinBox *spin);
    void addCounter(QLatin1StringView mnemonic, Get get, ValueEdit *line);
    void send(const WholeSpinBox *spin, int lowest, int highest, Set set, const QString &complaint);
    void displayFlow(const QString &value);

    std::unique_ptr<Ui::tmipPCM> ui;
    TmoipChan *m_channel;
    SettingTable m_settings;
    SettingTable m_counters;
    EntryField m_remoteAddress;
    QList<WholeSpinBox *> m_spins;
    QTimer m_updateAllDynamicParamsTmr;
};
