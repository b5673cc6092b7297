#pragma once

#include "channels/DmdChan.h"
#include "frontpanel/DemodulatorOutput.h"
#include "frontpanel/DemodulatorParts.h"
#include "frontpanel/DemodulatorStatus.h"
#include "frontpanel/PanelOf.h"

#include <memory>

namespace Ui {
class DemodulatorPanel;
}

/// Panel of one demodulator channel. Which controls it shows depends on the chassis' cards and on the mode.
class DemodulatorPanel : public PanelOf<DmdChan>
{
    Q_OBJECT

public:
    /// @param number position in the window from 1; the children's names end in "dmd1" to "dmd3"
    DemodulatorPanel(int number, const PanelContext &context, QWidget *parent);
    ~DemodulatorPanel() override;

    /// Fills and connects the panel, and shows it unless the chassis holds cards that have no place for it. Not owned;
    /// outlives the panel.
    void setChannel(DmdChan *channel, const CardFamilies &families);

    void updateDynamicParams() override { m_status.update(*channel()); }
    void restoreEntries() override;
    void showSlaved(bool slaved) override;

Q_SIGNALS:
    /// The operator asks for the settings that the panel does not show.
    void advancedSettingsRequested();

private Q_SLOTS:
    void cboDMOD_currentIndexChanged(int index);
    void cboDSRC_currentIndexChanged(int index);
    void cboVCFG_currentIndexChanged(int index) { choose(&DmdChan::setVCFG, index); }
    void cboBSDR_currentIndexChanged(int index) { choose(&DmdChan::setBSDR, index); }
    void cboDDQM_currentIndexChanged(int index) { choose(&DmdChan::setDDQM, index); }
    void cboADEQ_currentIndexChanged(int index) { choose(&DmdChan::setADEQ, index); }
    void cboVIDP_currentIndexChanged(int index) { choose(&DmdChan::setVIDP, index); }
    void cboVFBW_currentIndexChanged(int index);
    void chkboxALBW_released();
    void chkboxASWRG_released();
    void chkboxASWSS_released();
    void chkboxATMID_released();
    void sldrVGNA_valueChanged(int value) { changeGain(m_outputA, value); }
    void sldrVGNB_valueChanged(int value) { changeGain(m_outputB, value); }
    void lineRATEA_returnPressed() { enterRate(m_outputA); }
    void lineRATEB_returnPressed() { enterRate(m_outputB); }

private:
    void createOutputs();
    void createTable();
    void createVideoTable();
    void connectControls();

    // Display of settings; the values are wire text.
    void DisplayDemodMode(const QString &code);
    void DisplayInputSource(const QString &value);
    void DisplayAutoSettings(const QString &value, const QString &key);
    void DisplayVideoBandwidth(const QString &value);

    void ShowHideControls() { m_parts.ShowHideControls(channel()->getDMOD(), channel()->getVCFG()); }

    void changeGain(const DemodulatorOutput &output, int value);
    void enterRate(const DemodulatorOutput &output);
    [[nodiscard]] bool CheckValidDataRanges(const QString &letter, double rate);

    std::unique_ptr<Ui::DemodulatorPanel> ui;
    DemodulatorParts m_parts;
    DemodulatorStatus m_status;
    DemodulatorOutput m_outputA;
    DemodulatorOutput m_outputB;
};
