#pragma once

#include "channels/CmbrChan.h"
#include "frontpanel/PanelOf.h"
#include "inventory/CardFamilies.h"

#include <memory>

namespace Ui {
class CombinerPanel;
}

/// Panel of the combiner channel.
class CombinerPanel : public PanelOf<CmbrChan>
{
    Q_OBJECT

public:
    /// @param number position in the window from 1; the children's names end in "cmb1"
    CombinerPanel(int number, const PanelContext &context, QWidget *parent);
    ~CombinerPanel() override;

    /// Fills, connects and shows the panel. Not owned; outlives the panel.
    /// @param families decides which parts there are
    void setChannel(CmbrChan *channel, const CardFamilies &families);

    /// Shows or hides the AGC levels: a receiver that plays back a tape has none.
    void showAgcLevels(bool shown);

    void updateDynamicParams() override;

private Q_SLOTS:
    void cboCVMD_currentIndexChanged(int index) { choose(&CmbrChan::setCVMD, index); }
    void cboCMOD_currentIndexChanged(int index) { choose(&CmbrChan::setCMOD, index); }
    void cboIFBWcmb_currentIndexChanged(int index) { choose(&CmbrChan::setIFBW, index); }
    void cboSLPAcmb_currentIndexChanged(int index);
    void cboSLPBcmb_currentIndexChanged(int index);
    void cboPOLAcmb_currentIndexChanged(int index) { choose(&CmbrChan::setPOLA, index); }
    void cboPOLBcmb_currentIndexChanged(int index) { choose(&CmbrChan::setPOLB, index); }
    void btnAGCZcmb_clicked();
    void btnCHZ1_clicked();
    void btnCHZ2_clicked();

private:
    void showParts(const CardFamilies &families);
    void createTable();

    // Display of settings; the values are wire text.
    void AGCZerocmb(const QString &value);
    void CH1Zero(const QString &value);
    void CH2Zero(const QString &value);
    void SLPAcmb(const QString &value);
    void SLPBcmb(const QString &value);

    // Display of status values
    void UpdateCLCK();
    void UpdateCLCS();
    void UpdateAGCAcmb();
    void UpdateAGCBcmb();

    std::unique_ptr<Ui::CombinerPanel> ui;
};
