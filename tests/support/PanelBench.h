#pragma once

#include "support/WindowBench.h"

/// The main window with its panels, used as by an operator. What is shown is written "widget.property=value".
class PanelBench : public WindowBench
{
public:
    /// What an operator does to a control, and the effect.
    struct Change
    {
        QByteArrayList reports; ///< arrive before
        QByteArray control;
        QByteArray input; ///< as for operate()
        QByteArray sent;  ///< empty for nothing
        QByteArrayList shown;
    };

    /// Starts a case: activates the window, returns the focus, and shows @p reports.
    [[nodiscard]] bool startCase(const QByteArrayList &reports);

    [[nodiscard]] QWidget &widget(const QByteArray &name) const { return find<QWidget>(QString::fromLatin1(name)); }
    /// The present values of the properties in @p expected, in the same form.
    [[nodiscard]] QByteArrayList actual(const QByteArrayList &expected) const;
    /// What differs from @p expected, items between "|"; empty if nothing does.
    [[nodiscard]] QByteArray mistakes(const QByteArray &expected) const;
    /// Shows the status values too.
    void refreshStatus();
    /// What every named widget of the panels shows, status values included.
    [[nodiscard]] QByteArrayList everythingShown();

    static void turnWheel(QWidget &widget);
    /// @param input position of an item for a box, "click", the name of a key, or a text that Return follows
    void operate(const QByteArray &name, const QByteArray &input);
    /// Makes the change twice. When refused, everything snaps back; when accepted, it stays until the chassis reports
    /// the former value, which changes that control back and nothing else.
    void verify(const Change &change);
    /// Confirms the warnings that appear while @p act runs, and returns them: "title: text".
    [[nodiscard]] static QByteArrayList warningsDuring(const std::function<void()> &act);
};
