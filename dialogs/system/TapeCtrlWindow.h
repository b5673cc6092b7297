#pragma once

#include "channels/TapeChan.h"
#include "controls/EntryField.h"
#include "controls/FocusReturn.h"
#include "controls/SettingTable.h"
#include "dialogs/EntryDialog.h"

#include <QList>

#include <memory>

class QLabel;
class ValueSlider;

namespace Ui {
class TapeCtrlWindow;
}

/// Frequency and gains of the tape interface. Shows what the card confirms, and deletes itself when closed.
class TapeCtrlWindow : public EntryDialog
{
    Q_OBJECT

public:
    /// @param channel outlives the window
    /// @param open    the opener's flag, true as long as the window exists; outlives it
    TapeCtrlWindow(QWidget *parent, TapeChan *channel, bool *open);
    ~TapeCtrlWindow() override;

    /// Shows a frequency in Hz, shortened by "M" or "K".
    void DisplayTapeFreq(const QString &value);
    /// Shows a gain on slider and label.
    /// @param which "1" and "2" for the channels, "0" for the combined output
    void DisplayTapeGain(const QString &which, const QString &value);

public Q_SLOTS:
    void lineTFREQ_returnPressed();
    void lineTFREQ_textEdited() { m_focusReturn.start(); }
    void sldrTGAINCH1_valueChanged(int value) { sendGain(QStringLiteral("1"), value); }
    void sldrTGAINCH2_valueChanged(int value) { sendGain(QStringLiteral("2"), value); }
    void sldrTGAINCMB_valueChanged(int value) { sendGain(QStringLiteral("0"), value); }
    void RemoveControlFocusTmr_Tick() { m_focusReturn.tick(); }
    /// Shows a setting in force unless a change of it still waits for its answer. A half-typed text stays.
    void UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                       const QString &FailedData);

private:
    struct Gain
    {
        QString which;
        ValueSlider *slider;
        QLabel *label;
        void (TapeChan::*set)(const QString &);
    };

    void createTable();
    void connectControls();
    void sendGain(const QString &which, int value);
    [[nodiscard]] const Gain &gain(const QString &which) const;

    std::unique_ptr<Ui::TapeCtrlWindow> ui;
    TapeChan *m_channel;
    bool *m_open;
    FocusReturn m_focusReturn;
    SettingTable m_settings;
    EntryField m_frequency;
    QList<Gain> m_gains;
};
