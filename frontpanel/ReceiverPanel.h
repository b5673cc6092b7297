#pragma once

#include "channels/RcvrChan.h"
#include "controls/EntryField.h"
#include "frontpanel/FrequencyEntry.h"
#include "frontpanel/OffsetDisplay.h"
#include "frontpanel/PanelOf.h"
#include "frontpanel/SignalDisplay.h"

#include <memory>

namespace Ui {
class ReceiverPanel;
}

/// Panel of one receiver channel.
class ReceiverPanel : public PanelOf<RcvrChan>
{
    Q_OBJECT

public:
    /// @param number position in the window from 1; the children's names end in "ch1" or "ch2"
    ReceiverPanel(int number, const PanelContext &context, QWidget *parent);
    ~ReceiverPanel() override;

    /// Fills, connects and shows the panel. Not owned; outlives the panel.
    void setChannel(RcvrChan *channel);

    /// Shows the choice of playing back a tape, which comes with a tape interface.
    void showPlayback();

    /// The label that can hold the focus while no control does.
    [[nodiscard]] QWidget *neutralFocusHolder() const;

    void updateDynamicParams() override;
    void restoreEntries() override;
    void showSlaved(bool slaved) override;

Q_SIGNALS:
    /// The panel now shows whether the receiver plays back a tape.
    void playbackShown(bool playing);

private Q_SLOTS:
    void doubleSpinBoxFREQ_valueChanged(const QString &text);
    void cboIFBW_currentIndexChanged(int index) { choose(&RcvrChan::setIFBW, index); }
    void btnAGCF_clicked();
    void btnAGCZ_clicked();
    void cboSLPA_currentIndexChanged(int index);
    void cboSLPB_currentIndexChanged(int index);
    void cboPOLA_currentIndexChanged(int index) { choose(&RcvrChan::setPOLA, index); }
    void cboPOLB_currentIndexChanged(int index) { choose(&RcvrChan::setPOLB, index); }
    void cboAGCT_currentIndexChanged(int index) { choose(&RcvrChan::setAGCT, index); }
    void cboAFC_currentIndexChanged(int index);
    void sldrAFCM_valueChanged(int value);
    void cboCAMP_currentIndexChanged(int index) { choose(&RcvrChan::setCAMP, index); }
    void cboPLYB_currentIndexChanged(int index) { choose(&RcvrChan::setPLYB, index); }
    void lineANCF_returnPressed();
    void lineANCF_textEdited() { focusReturn().start(); }
    void chkboxACFE_released();

private:
    void createTable();
    void connectControls();

    // Display of settings; the values are wire text.
    void AGCFreeze(const QString &value);
    void AGCZero(const QString &value);
    void SLPA(const QString &value);
    void SLPB(const QString &value);
    void AFC(const QString &value);
    void TapePlayback(const QString &value);
    void DisplayAntennaCF(const QString &ACFE, const QString &ANCF);

    // Display of status values
    void UpdateSYNL();
    void UpdateMAFL() { m_offset.showLoopLock(channel()->getAFC(), channel()->getMAFL()); }
    void UpdateRLST() { m_offset.showStress(channel()->getAFC(), channel()->getRLST()); }
    void UpdateSSLV() { m_signal.showLevel(channel()->getAGCZ(), channel()->getSSLV()); }
    void UpdateAGCA();
    void UpdateAGCB();

    std::unique_ptr<Ui::ReceiverPanel> ui;
    OffsetDisplay m_offset;
    SignalDisplay m_signal;
    FrequencyEntry m_frequency;
    EntryField m_antennaFactor;
};
