#pragma once

#include "inventory/CardFamilies.h"

#include <QList>
#include <QPointer>
#include <QWidget>

#include <array>
#include <functional>

class ChannelDirectory;
class FocusReturn;
class SerialPortController;
class TmoipCard;

/// The windows beside the main window that do not block it: at most one of each, except for TMoIP windows.
///
/// Each is a child of the main window. A window that is already open comes to the front instead of opening twice. To
/// add a window, give it a name in the list below and a function that opens it.
class AuxiliaryWindows
{
public:
    static constexpr std::size_t kDemodulators = 3; ///< that windows can be opened for

    /// @param owner the main window; outlives this, as does its focus return
    AuxiliaryWindows(FocusReturn &focusReturn, QWidget *owner) : m_focusReturn(focusReturn), m_owner(owner) {}
    /// Deletes the open windows while their flags still exist.
    ~AuxiliaryWindows();
    Q_DISABLE_COPY_MOVE(AuxiliaryWindows)

    /// The chassis that the windows are about. Until then none opens.
    /// @param link      the link whose cards are listed and whose channels are named; outlives this
    /// @param directory the channels of that link; outlives this
    void setChassis(SerialPortController *link, const ChannelDirectory *directory, const CardFamilies &families);

    void openCards();
    void openNaming();
    /// @param position of the demodulator, from 0; without one nothing opens
    void openAdvancedSettings(int position);
    void openEyeConst(int position);
    void openTape();
    /// Opens a further window each time.
    void openTmoip(TmoipCard *card);
    /// @param onClosed called once, when the operator closes the window
    void openCombinerZero(const std::function<void()> &onClosed);
    /// Deletes the window from the event loop.
    void endCombinerZero();
    /// Marks what all of them show as stale, until this is called again.
    /// @param reason shown with the mark; empty removes it
    void setStale(const QString &reason);
    /// Shows the present levels of the combiner in its window, if that is open.
    void UpdateCmbZero();

private:
    enum Name : std::size_t {
        Cards,
        Naming,
        CombinerZeroing,
        Tape,
        Advanced, ///< one a demodulator
        EyeConst = Advanced + kDemodulators,
        NameCount = EyeConst + kDemodulators
    };

    struct Place
    {
        QPointer<QWidget> window;
        bool open = false; ///< cleared by the window when it is deleted, or by the function that ends it
    };

    /// Shows the window of this name; unless it is open, @p make creates it with the address of its flag.
    template <typename Make>
    void open(std::size_t name, Make make);
    void prepare(QWidget *window);
    static void present(QWidget *window);
    void mark(QWidget *window) const;
    [[nodiscard]] QList<QPointer<QWidget>> windows() const;

    template <typename C>
    [[nodiscard]] C *channel(int position) const;

    FocusReturn &m_focusReturn;
    QWidget *m_owner;
    SerialPortController *m_link = nullptr;
    const ChannelDirectory *m_directory = nullptr;
    CardFamilies m_families;
    std::array<Place, NameCount> m_places;
    QList<QPointer<QWidget>> m_tmoipWindows;
    int m_tmoipOpened = 0;
    QString m_staleReason;
};
