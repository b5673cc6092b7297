#pragma once

#include <QCheckBox>

/// A check box for a setting that is on or off. Any other value is shown in the box as text, "--" for one that was
/// never read; the box is unchecked then.
class SwitchBox : public QCheckBox
{
    Q_OBJECT
    Q_PROPERTY(QString standIn READ standIn)

public:
    using QCheckBox::QCheckBox;

    /// @param value "1" on, "0" off
    void showValue(const QString &value);
    /// @param isValid whether @p value is on or off at all
    void showValue(const QString &value, bool isOn, bool isValid);
    /// The text in the box; empty for a switch that is on or off.
    [[nodiscard]] QString standIn() const { return m_standIn; }

protected:
    void nextCheckState() override;
    void paintEvent(QPaintEvent *event) override;

private:
    void setStandIn(const QString &text);

    QString m_standIn;
};
