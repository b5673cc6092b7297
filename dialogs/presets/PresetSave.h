#pragma once

#include "dialogs/presets/PresetDialog.h"

class QLineEdit;

/// The dialog in which the operator names the preset in which the chassis stores its present state, a new or an
/// existing one.
class PresetSave : public PresetDialog
{
    Q_OBJECT

public:
    /// @param names the stored presets
    PresetSave(ChannelLink *controller, const QStringList &names, QWidget *parent);

public Q_SLOTS:
    void btnSave_clicked();
    void lineFileName_textEdited(const QString &text);

protected:
    void setChosenName(const QString &name) override;
    [[nodiscard]] QString chosenName() const override;

private:
    QLineEdit *m_lineFileName;
};
