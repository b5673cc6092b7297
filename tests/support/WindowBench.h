#pragma once

#include "frontpanel/ZIRVOFSMainWindow.h"
#include "head/HeadLinks.h"
#include "support/LinkBench.h"

#include <QApplication>
#include <QMessageBox>

#include <functional>
#include <memory>
#include <utility>

class CmbrChan;
class DmdChan;
class FocusReturn;
class RcvrChan;
class UniversalChan;

/// The main window on the bench, with a scripted chassis at the far end of its command link. Its cards are chosen with
/// links().fit() before start() or goLive().
class WindowBench
{
public:
    WindowBench();
    /// Ends window and links in the order of the program.
    ~WindowBench();

    [[nodiscard]] LinkBench &links() { return m_links; }
    [[nodiscard]] FarEnd &chassis() { return m_links.command(); }
    [[nodiscard]] ZIRVOFSMainWindow &window() { return *m_window; }
    /// Ends the window alone; the links stay until the bench ends.
    void endWindow();
    [[nodiscard]] SerialPortController *commandLink() const { return m_commandLink; }

    /// Shows the window and opens the command link.
    void start();
    /// Runs the whole start-up, including start() if that was not called. Afterwards the panels are filled and the
    /// window is active.
    [[nodiscard]] bool goLive();

    /// Stops the reading back after lost answers, so that only the windows send.
    void stopReadingBack();

    template <typename W>
    [[nodiscard]] W &find(const QString &name) const
    {
        W *const found = m_window->findChild<W *>(name);
        if (!found)
            qFatal("no such widget: %s", qPrintable(name));
        return *found;
    }
    [[nodiscard]] QAction &action(const QString &name) const { return find<QAction>(name); }
    [[nodiscard]] FocusReturn &focusReturn() const;
    [[nodiscard]] UniversalChan *system() const;
    [[nodiscard]] RcvrChan *receiver(int index) const;
    [[nodiscard]] CmbrChan *combiner(int index) const;
    [[nodiscard]] DmdChan *demodulator(int index) const;

    static void type(QWidget &field, const QString &text);
    /// Leaves "2300" half-typed in the first receiver's frequency, where 2250.5 is in force, and stops the focus
    /// return.
    void typeHalfAnEntry() const;
    /// Whether that text is given up, and whether the focus return is running as @p returns says.
    [[nodiscard]] bool isEntryGivenUp(bool returns = true) const;
    /// The window's timer that runs with this interval; null if none does.
    [[nodiscard]] QTimer *runningTimer(int intervalMs) const;

    /// The present texts of the status line.
    [[nodiscard]] QStringList words() const;

    /// The frames that the window sends because of @p act. A marker request behind them ends the list: when this
    /// returns, all of them are answered or timed out, and the outcome is shown.
    [[nodiscard]] QByteArrayList sentBy(const std::function<void()> &act);
    /// The chassis sends unsolicited reports; they are shown when this returns.
    void report(const QByteArrayList &frames);

    struct Step
    {
        std::function<bool()> when;
        std::function<void()> then;
    };
    /// Runs the steps in order, each as soon as its condition holds, also while a modal box runs its own event loop. If
    /// a condition never holds, closes every modal dialog and returns false.
    [[nodiscard]] static bool takeSteps(QList<Step> steps);
    /// The visible windows of a class.
    template <typename W>
    [[nodiscard]] static QList<W *> visible()
    {
        QList<W *> windows;
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *const window = qobject_cast<W *>(widget); window && window->isVisible())
                windows.append(window);
        }
        return windows;
    }
    /// Chooses a menu entry; returns the window of the class, or null if there is not exactly one.
    template <typename W>
    [[nodiscard]] W *open(const QString &actionName) const
    {
        action(actionName).trigger();
        QCoreApplication::processEvents();
        return visible<W>().size() == 1 ? visible<W>().front() : nullptr;
    }
    /// Whether a standard link has finished its start, or the restart after a loss. Skips the countdown; to be called
    /// until it returns true.
    [[nodiscard]] static bool hasStarted(SerialPortController &link, const FarEnd &end);
    /// The visible message box with this text; null if there is none.
    [[nodiscard]] static QMessageBox *box(const QString &text);
    [[nodiscard]] static qsizetype boxCount();

private:
    LinkBench m_links;
    HeadLinks m_headLinks;
    std::unique_ptr<ZIRVOFSMainWindow> m_window;
    SerialPortController *m_commandLink = nullptr;
    int m_marker = 0;
};
