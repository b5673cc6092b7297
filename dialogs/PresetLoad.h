#pragma once

#include "dialogs/PresetDialog.h"

class QLabel;

/// Lets the operator choose a stored preset and has the chassis restore it.
class PresetLoad : public PresetDialog
{
    Q_OBJECT

public:
    /// @param names the stored presets
    PresetLoad(SerialPortController *controller, const QStringList &names, QWidget *parent);

public Q_SLOTS:
    void btnLoad_clicked();

protected:
    void setChosenName(const QString &name) override;
    [[nodiscard]] QString chosenName() const override;

private:
    QLabel *m_lblFileName;
};
