#pragma once

#include <QLineEdit>

/// A field for a value. A half-typed text stays until it is committed or given up: no report changes it, and it
/// survives a change to another window. The first key replaces the "--" of an unknown value.
class ValueEdit : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

    /// Shows a text unless one is half-typed.
    void showText(const QString &text);

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void selectUnknown();
};
