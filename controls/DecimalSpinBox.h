#pragma once

#include <QDoubleSpinBox>

/// A spin box that takes a comma for the decimal point it is: to leave it out, as for a digit separator, would turn
/// "2265,5" into another number without a word.
class DecimalSpinBox : public QDoubleSpinBox
{
    Q_OBJECT

public:
    using QDoubleSpinBox::QDoubleSpinBox;

    [[nodiscard]] QLineEdit *lineEdit() const { return QDoubleSpinBox::lineEdit(); }
    /// Whether the operator has typed something that is neither committed nor discarded.
    [[nodiscard]] bool isHalfTyped() const;

protected:
    /// A menu that opens takes the focus for a while; that neither commits half an entry nor loses it.
    void focusOutEvent(QFocusEvent *event) override;
    QValidator::State validate(QString &input, int &position) const override;
};
