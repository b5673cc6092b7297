#pragma once

#include <QAbstractSpinBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QSignalBlocker>

#include <utility>

/// What the project's spin boxes add to @p Box, which signals what is typed when it is committed (no keyboard
/// tracking): a text may stand in place of the number, "--" for an unknown one. A number typed over it is a change
/// whatever number the box holds meanwhile; steps lead nowhere from a text.
///
/// What the program shows is not signalled: the box tells of what the operator does.
template <typename Box>
class ValueSpin : public Box
{
public:
    using Number = decltype(std::declval<Box>().value());

    explicit ValueSpin(QWidget *parent = nullptr) : Box(parent)
    {
        QObject::connect(lineEdit(), &QLineEdit::textEdited, this, [this] { m_isTyped = true; });
        QObject::connect(this, &Box::textChanged, this, [this] { m_standIn.clear(); }); // comes before valueChanged()
        QObject::connect(this, &Box::editingFinished, this, [this] { endEditing(); });
    }

    [[nodiscard]] QLineEdit *lineEdit() const { return Box::lineEdit(); }
    /// Whether the operator has typed something that is neither committed nor discarded.
    [[nodiscard]] bool isHalfTyped() const { return lineEdit()->isModified(); }

    /// Shows a number in place of what the box shows, and of what is typed.
    void showNumber(Number number) { show({}, number); }
    /// Shows a text in the same way.
    /// @param number the one that the box holds meanwhile
    void showText(const QString &text, Number number) { show(text, number); }
    /// Drops what is typed.
    void discard() { show(m_standIn, Box::value()); }
    /// Ends what is being typed as Return does.
    void commit()
    {
        Box::interpretText();
        Q_EMIT Box::editingFinished();
    }

protected:
    QString textFromValue(Number number) const override
    {
        return isTextShown() ? m_standIn : Box::textFromValue(number);
    }

    QAbstractSpinBox::StepEnabled stepEnabled() const override
    {
        return isTextShown() ? QAbstractSpinBox::StepNone : Box::stepEnabled();
    }

    void fixup(QString &input) const override
    {
        m_isTyped = false; // no number, so the text comes back
        Box::fixup(input);
    }

    void keyPressEvent(QKeyEvent *event) override
    {
        if (isTextShown())
            lineEdit()->selectAll(); // the first key replaces it
        Box::keyPressEvent(event);
    }

    /// A menu that opens takes the focus for a while; that neither commits half an entry nor loses it.
    void focusOutEvent(QFocusEvent *event) override
    {
        if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::MenuBarFocusReason)
            QWidget::focusOutEvent(event);
        else
            Box::focusOutEvent(event);
    }

private:
    [[nodiscard]] bool isTextShown() const { return !m_standIn.isEmpty() && !m_isTyped; }

    void show(const QString &text, Number number)
    {
        const QSignalBlocker showing(this);
        m_standIn = text;
        m_isTyped = false;
        Box::setValue(number);
        lineEdit()->setModified(false);
    }

    void endEditing()
    {
        lineEdit()->setModified(false);
        const bool isMeant = std::exchange(m_isTyped, false) && !m_standIn.isEmpty();
        if (!isMeant)
            return;
        m_standIn.clear(); // the number was the one held, and the base class has told nobody
        Q_EMIT Box::textChanged(Box::text());
        Q_EMIT Box::valueChanged(Box::value());
    }

    QString m_standIn;              ///< in place of the number
    mutable bool m_isTyped = false; ///< over what the box showed
};
