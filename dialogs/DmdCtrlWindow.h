#pragma once

#include "channels/DmdChan.h"
#include "controls/FocusReturn.h"
#include "dialogs/EntryDialog.h"

#include <QList>

#include <memory>

class ChoiceBox;
class QLabel;
class ValueEdit;
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

    /// Whether @p value is accepted for the number of this name; if not, a box says what is. The loop bandwidths are
    /// fractions here, the other numbers have the unit that the operator types.
    [[nodiscard]] bool CheckValidDataRanges(const QString &name, double value);

public Q_SLOTS:
    /// Shows a setting in force. What the window does not show is ignored, and so is what is older than a change that
    /// still waits for its answer.
    void UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                       const QString &FailedData);
    /// Enables the controls that apply to the channel's mode, output configuration and automatic settings.
    void ShowHideControls();
    void RemoveControlFocusTmr_Tick() { m_focusReturn.tick(); }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    using Getter = QString (DmdChan::*)() const;
    using Setter = void (DmdChan::*)(const QString &);

    /// How the position of an item stands for a value.
    enum class Form {
        Position,
        PositionLessOne, ///< "-1" for the first item
        VideoSource,     ///< "4" and "5" are no sources; "6" and "7" come next
    };
    /// A setting that the operator chooses from a list.
    struct Choice
    {
        QLabel *label;
        ChoiceBox *box;
        QLatin1StringView mnemonic;
        Getter get;
        Setter set;
        Form form = Form::Position;
        Setter setToo = nullptr; ///< of a second setting that takes the same value
    };
    /// A setting that the operator types.
    struct Entry
    {
        QLabel *label;
        ValueEdit *line;
        const DmdNumber *number;
    };

    void createTables();
    void chooseLayout(bool hasClockPhase);
    void fill();
    void connectControls();

    void choose(const Choice &choice, int index);
    void enter(const Entry &entry);
    void restoreEntries();

    void display(const Choice &choice, const QString &value);
    void display(const Entry &entry, const QString &value);
    void showInForce(const Entry &entry);
    void followSweepRangeMode(const QString &ASRG);
    void emptySweepRange();
    void showTitle();

    [[nodiscard]] QStringList lockedSettings() const;
    void setUsable(QWidget *label, QWidget *control, bool usable);

    [[nodiscard]] static QString valueAt(Form form, int index);
    [[nodiscard]] static qint64 positionOf(Form form, const QString &value);

    std::unique_ptr<Ui::DmdCtrlWindow> ui;
    DmdChan *m_channel;
    bool *m_open;
    FocusReturn m_focusReturn;
    QList<Choice> m_choices;
    QList<Entry> m_entries;
};
