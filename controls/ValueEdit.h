#pragma once

#include <QLineEdit>

/// A field for a value that can be typed over. What is being typed is the operator's until it is committed or given up:
/// a report does not touch it, and it stays while another window has the keyboard. The first key replaces the "--" of
/// an unknown value.
class ValueEdit : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

    /// Shows a text, unless one is half-typed.
    void showText(const QString &text);

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void selectUnknown();
};
