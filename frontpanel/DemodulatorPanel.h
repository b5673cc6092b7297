#pragma once

#include "frontpanel/ChannelPanel.h"
#include "inventory/CardFamilies.h"

#include <memory>

class DmdChan;
class QLabel;
class ValueEdit;
class ValueSlider;

namespace Ui {
class DemodulatorPanel;
}

/// Panel of one demodulator channel. Which controls it shows depends on the chassis' cards and on the mode.
class DemodulatorPanel : public ChannelPanel
{
    Q_OBJECT

public:
    /// @param number position in the window from 1; the children's names end in "dmd1" to "dmd3"
    DemodulatorPanel(int number, const PanelContext &context, QWidget *parent);
    ~DemodulatorPanel() override;

    /// Fills and connects the panel, and shows it unless the chassis holds cards that have no place for it. Not owned;
    /// outlives the panel.
    void setChannel(DmdChan *channel, const CardFamilies &families);

    void updateDynamicParams() override;
    void restoreEntries() override;
    void showSlaved(bool slaved) override;

Q_SIGNALS:
    /// The operator asks for the settings that the panel does not show.
    void advancedSettingsRequested();

private Q_SLOTS:
    void cboDMOD_currentIndexChanged(int index);
    void cboDSRC_currentIndexChanged(int index);
    void cboVCFG_currentIndexChanged(int index);
    void cboBSDR_currentIndexChanged(int index);
    void cboDDQM_currentIndexChanged(int index);
    void cboADEQ_currentIndexChanged(int index);
    void cboVIDP_currentIndexChanged(int index);
    void cboVFBW_currentIndexChanged(int index);
    void chkboxALBW_released();
    void chkboxASWRG_released();
    void chkboxASWSS_released();
    void chkboxATMID_released();
    void sldrVGNA_valueChanged(int value);
    void sldrVGNB_valueChanged(int value);
    void lineRATEA_returnPressed();
    void lineRATEB_returnPressed();

private:
    /// One of the two outputs, with what differs between them.
    struct Output
    {
        QLatin1StringView letter;
        ValueEdit *rate;
        ValueSlider *gain;
        QLabel *gainValue;
        QString (DmdChan::*getRate)() const;
        void (DmdChan::*setRate)(const QString &);
        void (DmdChan::*setGain)(const QString &);
        QLatin1StringView rateMnemonic;
    };

    void showSetting(const QString &Cmd, const QString &Data) override;
    void showParts();
    void fill();
    void connectControls();

    // Display of settings; the values are wire text.
    void DisplayDemodMode(const QString &code);
    void DisplayInputSource(const QString &value);
    /// The setting that chooses the video filter: one box for two, of which each kind of card has one in use.
    [[nodiscard]] QLatin1StringView videoFilterMnemonic() const;
    void DisplayVideoFilter(const QString &value, QLatin1StringView mnemonic);
    void showVideoFilter();
    void DisplayAutoSettings(const QString &value, const QString &key);
    void DisplayVideoGain(const Output &output, const QString &value);
    void DisplayVideoBandwidth(const QString &value);
    void DisplayDataRate(const Output &output, const QString &value);
    void refillVideoFilters();

    // What the mode allows
    void ShowHideControls();
    void ShowAnalogA(bool show);
    void ShowAnalogB(bool show);
    void ShowDataRateB(bool show);
    void ShowPeakDev(bool show);
    void ShowFreqOffset(bool show);

    // Display of status values
    void UpdateDLCK();
    void UpdateBLCK();
    void UpdateFOFF();
    void UpdatePDEV();
    void UpdateVLV1();

    [[nodiscard]] Output outputA() const;
    [[nodiscard]] Output outputB() const;
    void changeGain(const Output &output, int value);
    void enterRate(const Output &output);
    [[nodiscard]] bool CheckValidDataRanges(const QString &letter, double rate);
    [[nodiscard]] QString gainText(const QString &value) const;

    std::unique_ptr<Ui::DemodulatorPanel> ui;
    const int m_number;
    DmdChan *m_channel = nullptr;
    CardFamilies m_families;
};
