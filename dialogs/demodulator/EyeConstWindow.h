#pragma once

#include <QDialog>

class DmdChan;
class ChoiceBox;

/// Chooses what a demodulator sends on its eye output. Deletes itself when closed.
class EyeConstWindow : public QDialog
{
    Q_OBJECT

public:
    /// @param channel outlives the window
    /// @param open    the opener's flag, true as long as the window exists; outlives it
    EyeConstWindow(QWidget *parent, DmdChan *channel, bool *open);
    ~EyeConstWindow() override;

    /// Shows a mode, "0" to "3". A negative number counts as 0; any other value is not in the list.
    void DisplayMode(const QString &value);

public Q_SLOTS:
    void cboMode_currentIndexChanged(int index);
    /// Shows the mode in force unless a change of it still waits for its answer. Other settings are ignored.
    void UpdateSetting(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed,
                       const QString &FailedData);
    /// Accepts a block of the eye link; the window does not draw it.
    void UpdateScope(const QByteArray &block) { Q_UNUSED(block) }

private:
    DmdChan *m_channel;
    bool *m_open;
    ChoiceBox *m_cboMode;
};
