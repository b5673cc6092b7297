#pragma once

#include <QList>
#include <QString>

class QAction;

namespace Ui {
class MainWindow;
}

/// The entries of the main window's menus: which can be chosen, and which are marked.
class MainMenus
{
public:
    explicit MainMenus(const Ui::MainWindow &form) : ui(form) {}

    /// Enables what needs the settings of the chassis.
    void enable(bool hasCombiner, bool hasTape, qsizetype demodulators) const;
    /// Enables the entry for TMoIP cards.
    void enableTmoip() const;

    /// Marks the slaving mode, given as wire text. An unknown one changes nothing; returns whether it is known.
    bool showSlaving(const QString &SLAVE) const;
    /// Marks the 10 MHz reference; neither as long as it is unknown.
    void showReference(const QString &TMRF) const;

    /// The entries of the eye-pattern windows, by demodulator.
    [[nodiscard]] QList<QAction *> eyeActions() const;

private:
    const Ui::MainWindow &ui;
};
