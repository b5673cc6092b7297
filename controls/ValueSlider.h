#pragma once

#include <QSlider>

/// A slider that shows the value in force. For a number outside its range it is at the nearer end, for any other text
/// at its start; the operator can choose that position like any other.
///
/// valueChanged() reports what the operator does, not what the program shows.
class ValueSlider : public QSlider
{
    Q_OBJECT

public:
    explicit ValueSlider(QWidget *parent = nullptr);

    /// @param value as the wire's text
    void showValue(const QString &value);
    /// The value shown: the position, or the text of a value that is no position; "--" for an unknown one.
    [[nodiscard]] QString shownText() const;

private:
    void chooseStandIn();

    QString m_standIn; ///< the value in force that is no position; else empty
};
