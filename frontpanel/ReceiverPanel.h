#pragma once

#include "frontpanel/ChannelPanel.h"

#include <memory>
#include <optional>

class RcvrChan;

namespace Ui {
class ReceiverPanel;
}

/// Panel of one receiver channel.
class ReceiverPanel : public ChannelPanel
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
    void cboIFBW_currentIndexChanged(int index);
    void btnAGCF_clicked();
    void btnAGCZ_clicked();
    void cboSLPA_currentIndexChanged(int index);
    void cboSLPB_currentIndexChanged(int index);
    void cboPOLA_currentIndexChanged(int index);
    void cboPOLB_currentIndexChanged(int index);
    void cboAGCT_currentIndexChanged(int index);
    void cboAFC_currentIndexChanged(int index);
    void sldrAFCM_valueChanged(int value);
    void cboCAMP_currentIndexChanged(int index);
    void cboPLYB_currentIndexChanged(int index);
    void lineANCF_returnPressed();
    void lineANCF_textEdited();
    void chkboxACFE_released();

private:
    void showSetting(const QString &Cmd, const QString &Data) override;
    void fill();
    void connectControls();

    // Display of settings; the values are wire text.
    void showFrequency(const QString &FREQ);
    void showManualOffset(const QString &AFCM);
    void AGCFreeze(const QString &value);
    void AGCZero(const QString &value);
    void SLPA(const QString &value);
    void SLPB(const QString &value);
    void AFC(const QString &value);
    void showAfcMode(const QString &AFC);
    void TapePlayback(const QString &value);
    void DisplayAntennaCF(const QString &ACFE, const QString &ANCF);
    void showSignalReference(const QString &ACFE);
    void showReference(const QString &text, const QString &style);

    // Display of status values
    void UpdateSYNL();
    void UpdateMAFL();
    void UpdateRLST();
    void UpdateSSLV();
    void UpdateAGCA();
    void UpdateAGCB();

    [[nodiscard]] bool isTunable(double frequency) const;
    [[nodiscard]] std::optional<double> beyondRangeEdge(double frequency) const;
    void refuseFrequency(double frequency);

    std::unique_ptr<Ui::ReceiverPanel> ui;
    RcvrChan *m_channel = nullptr;
};
