#pragma once

#include "dialogs/presets/PresetDialog.h"

class QLabel;

/// The dialog in which the operator chooses a stored preset for the chassis to restore.
class PresetLoad : public PresetDialog
{
    Q_OBJECT

public:
    /// @param names the stored presets
    PresetLoad(ChannelLink *controller, const QStringList &names, QWidget *parent);

public Q_SLOTS:
    void btnLoad_clicked();

protected:
    void setChosenName(const QString &name) override;
    [[nodiscard]] QString chosenName() const override;

private:
    QLabel *m_lblFileName;
};
