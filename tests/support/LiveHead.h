#pragma once

#include "frontpanel/ZIRVOFSMainWindow.h"
#include "head/HeadLinks.h"

#include <QStringList>

#include <memory>

class DmdCtrlWindow;

/// The main window with all its links in this process, against the chassis that the environment leads to.
class LiveHead
{
public:
    LiveHead();
    /// Ends window and links in the order of the program.
    ~LiveHead();
    Q_DISABLE_COPY_MOVE(LiveHead)

    /// Goes through the whole start, the seconds that links let pass being over at once. False if it does not end.
    /// @param hasSpectralCard whether a card answers on the spectral link
    [[nodiscard]] bool start(bool hasSpectralCard, int timeOutMs = 60'000);

    [[nodiscard]] ZIRVOFSMainWindow &window() const { return *m_window; }
    /// How many requests to the chassis are in flight or wait.
    [[nodiscard]] std::size_t backlog() const;
    /// Whether the links to the chassis are live, with nothing in flight.
    [[nodiscard]] bool isAtRest() const;

    /// Opens the window with the advanced settings of every demodulator that has a panel.
    void openAdvancedWindows() const;
    /// Those that are open, by the demodulator's address.
    [[nodiscard]] QMap<QString, DmdCtrlWindow *> advancedWindows() const;
    /// What every control of the panels, the menus and the advanced windows shows, "name.property=value" each, and
    /// whether the operator can reach it. Readings are left out.
    [[nodiscard]] QStringList shown() const;

private:
    [[nodiscard]] QList<SerialPortController *> cardLinks() const;

    HeadLinks m_links;
    std::unique_ptr<ZIRVOFSMainWindow> m_window;
    bool m_hasSpectralCard = false;
};
