#pragma once

#include "controls/ValueText.h"

#include <QAbstractSpinBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QSignalBlocker>

#include <optional>
#include <utility>

/// A spin box without keyboard tracking that can show a text instead of a number, "--" for an unknown one. A number
/// typed over the text is a change, whatever number the box holds behind it; steps from a text do nothing.
///
/// The box reports what the operator does, not what the program shows.
template <typename Box>
class ValueSpin : public Box
{
public:
    using Number = decltype(std::declval<Box>().value());

    explicit ValueSpin(QWidget *parent = nullptr) : Box(parent)
    {
        QObject::connect(lineEdit(), &QLineEdit::textEdited, this, [this] { m_isTyped = true; });
        QObject::connect(this, &Box::textChanged, this, [this] { m_standIn.clear(); }); // emitted before valueChanged()
        QObject::connect(this, &Box::editingFinished, this, [this] { endEditing(); });
    }

    [[nodiscard]] QLineEdit *lineEdit() const { return Box::lineEdit(); }
    /// Whether a typed text is neither committed nor discarded.
    [[nodiscard]] bool isHalfTyped() const { return lineEdit()->isModified(); }

    /// Shows a report unless a text is half-typed: its number if that is within the range, else @p value as it is.
    /// @param held the number that the box holds behind a text
    void showReport(std::optional<Number> number, const QString &value, Number held)
    {
        if (isHalfTyped())
            return;
        const bool isNumber = number && *number >= Box::minimum() && *number <= Box::maximum();
        show(isNumber ? QString() : ValueText::shown(value), isNumber ? *number : held);
    }
    /// Drops a half-typed text.
    void discard() { show(m_standIn, Box::value()); }
    /// Commits a half-typed text as Return does.
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
        m_isTyped = false; // not a number, so the former text comes back
        Box::fixup(input);
    }

    void keyPressEvent(QKeyEvent *event) override
    {
        if (isTextShown())
            lineEdit()->selectAll(); // the first key replaces it
        Box::keyPressEvent(event);
    }

    /// A menu that opens takes the focus; a half-typed text is neither committed nor lost.
    void focusOutEvent(QFocusEvent *event) override
    {
        if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::MenuBarFocusReason)
            Box::update(); // the frame shows the focus; the base class would commit
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
        m_standIn.clear(); // the number is the one held, for which the base class emits nothing
        Q_EMIT Box::textChanged(Box::text());
        Q_EMIT Box::valueChanged(Box::value());
    }

    QString m_standIn;              ///< shown instead of the number
    mutable bool m_isTyped = false; ///< since the last show or commit
};
