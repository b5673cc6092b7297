#pragma once

#include <QCheckBox>

/// A check box for a setting that is on or off. A value that is neither stands in the box in place of the mark, "--"
/// for one that was never read; the box counts as unchecked then.
class SwitchBox : public QCheckBox
{
    Q_OBJECT
    Q_PROPERTY(QString standIn READ standIn)

public:
    using QCheckBox::QCheckBox;

    /// @param value "1" on, "0" off
    void showValue(const QString &value);
    /// @param isValid whether @p value says that the switch is on or off
    void showValue(const QString &value, bool isOn, bool isValid);
    /// What stands in the box; empty for a switch that is on or off.
    [[nodiscard]] QString standIn() const { return m_standIn; }

protected:
    void nextCheckState() override;
    void paintEvent(QPaintEvent *event) override;

private:
    void setStandIn(const QString &text);

    QString m_standIn;
};
