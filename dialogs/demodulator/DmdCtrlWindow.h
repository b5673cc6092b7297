#pragma once

#include "channels/DmdChan.h"
#include "controls/EntryField.h"
#include "controls/FocusReturn.h"
#include "controls/SettingTable.h"
#include "dialogs/EntryDialog.h"

#include <QHash>
#include <QList>

#include <memory>

class ChoiceBox;
struct DmdNumber;

namespace Ui {
class DmdCtrlWindow;
}

/// The settings of one demodulator that the front panel does not show.
///
/// Every control is a row of a table that names its setting; a few functions serve all rows. The window shows what the
/// card confirms, and deletes itself when closed.
class DmdCtrlWindow : public EntryDialog
{
    Q_OBJECT

public:
    /// @param variant bit 0 chooses the layout for cards with clock phase and analog filter
    /// @param channel outlives the window
    /// @param open    the opener's flag, true as long as the window exists; outlives it
    DmdCtrlWindow(int variant, QWidget *parent, DmdChan *channel, bool *open);
    ~DmdCtrlWindow() override;

    /// Whether @p value is accepted for the number of this name; if not, a box names the valid range. The loop
    /// bandwidths are fractions here, the other numbers have the unit that the operator types.
    [[nodiscard]] bool CheckValidDataRanges(const QString &name, double value);

public Q_SLOTS:
    /// Shows a setting in force. A setting that the window does not show is ignored, and so is a report that is older
    /// than a change that still waits for its answer.
    void UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                       const QString &FailedData);
    /// Enables the controls that apply to the channel's mode, output configuration and automatic settings.
    void ShowHideControls();
    void RemoveControlFocusTmr_Tick() { m_focusReturn.tick(); }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void chooseLayout(bool hasClockPhase);
    void createTable();
    void add(ChoiceBox *box, QLatin1StringView mnemonic);
    void add(ValueEdit *line, QLatin1StringView mnemonic);
    void showVersions();
    void connectControls();

    void enter(const EntryField &field, const DmdNumber &number);
    void followSweepRangeMode(const QString &ASRG);
    void emptySweepRange();
    void showTitle();
    void setUsable(QWidget *control, bool usable);

    std::unique_ptr<Ui::DmdCtrlWindow> ui;
    DmdChan *m_channel;
    bool *m_open;
    FocusReturn m_focusReturn;
    SettingTable m_settings;
    QHash<QString, QWidget *> m_controls; ///< by mnemonic
    QList<EntryField> m_entries;
};
