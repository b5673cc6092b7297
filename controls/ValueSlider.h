#pragma once

#include <QSlider>

/// A slider that shows the value in force. For a value that is no position of it the slider stands where it begins, or
/// at its nearer end, and where it stands can be chosen like any other position.
///
/// What the program shows is not signalled: valueChanged() tells of what the operator does.
class ValueSlider : public QSlider
{
    Q_OBJECT

public:
    explicit ValueSlider(QWidget *parent = nullptr);

    /// @param value as the wire's text
    void showValue(const QString &value);
    /// What is in force, or asked for, as text: the position, or the value that is none; "--" for an unknown one.
    [[nodiscard]] QString shownText() const;

private:
    void chooseStandIn();

    QString m_standIn; ///< the value that is no position; empty if the position is in force
};
