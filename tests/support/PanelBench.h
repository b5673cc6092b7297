#pragma once

#include "support/WindowBench.h"

/// The main window with its panels, worked and read as by an operator. What is shown is written
/// "widget.property=value".
class PanelBench : public WindowBench
{
public:
    /// What an operator does to a control, and what comes of it.
    struct Change
    {
        QByteArrayList reports; ///< come before
        QByteArray control;
        QByteArray input; ///< as for operate()
        QByteArray sent;  ///< empty for nothing
        QByteArrayList shown;
    };

    /// Begins a case afresh: the window active, the focus at its neutral place, and shown what the chassis reports.
    [[nodiscard]] bool startCase(const QByteArrayList &reports);

    [[nodiscard]] QWidget &widget(const QByteArray &name) const { return find<QWidget>(QString::fromLatin1(name)); }
    /// What the places that @p expected names hold, in the same form.
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
    /// Lets the operator make the change twice: refused, everything snaps back; accepted, it stays until the chassis
    /// reports the value of before, which moves that control back and nothing else.
    void verify(const Change &change);
    /// Confirms the warnings that appear while @p act runs, and returns them: "title: text".
    [[nodiscard]] static QByteArrayList warningsDuring(const std::function<void()> &act);
};
