#pragma once

#include "dialogs/PresetDialog.h"

class QLineEdit;

/// Has the chassis store its present state under a new name or the name of a preset it holds.
class PresetSave : public PresetDialog
{
    Q_OBJECT

public:
    /// @param names the stored presets
    PresetSave(SerialPortController *controller, const QStringList &names, QWidget *parent);

public Q_SLOTS:
    void btnSave_clicked();
    void lineFileName_textEdited(const QString &text);

protected:
    void setChosenName(const QString &name) override;
    [[nodiscard]] QString chosenName() const override;

private:
    QLineEdit *m_lineFileName;
};
