#include "controls/ValueEdit.h"

#include "controls/ValueText.h"

#include <QFocusEvent>
#include <QSignalBlocker>

#include <optional>

void ValueEdit::showText(const QString &text)
{
    if (isModified())
        return;
    if (this->text() != text)
        setText(text);
    if (!hasFocus())
        setCursorPosition(0); // a long text shows its beginning
}

void ValueEdit::focusOutEvent(QFocusEvent *event)
{
    std::optional<QSignalBlocker> notEnded;
    if (event->reason() == Qt::ActiveWindowFocusReason)
        notEnded.emplace(this);
    QLineEdit::focusOutEvent(event);
}

void ValueEdit::keyPressEvent(QKeyEvent *event)
{
    selectUnknown();
    QLineEdit::keyPressEvent(event);
}

void ValueEdit::mouseReleaseEvent(QMouseEvent *event)
{
    QLineEdit::mouseReleaseEvent(event);
    selectUnknown();
}

void ValueEdit::selectUnknown()
{
    if (!isReadOnly() && !isModified() && text() == ValueText::kUnknown)
        selectAll();
}
