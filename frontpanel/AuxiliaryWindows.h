#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

#include <array>
#include <functional>

class Card;
class CmbrChan;
class DmdChan;
class FocusReturn;
class SerialPortController;
class TapeChan;
class TmoipCard;

/// The windows beside the main window that do not bar it, at most one of each, TMoIP windows aside.
///
/// Each is a child of the main window. One that is already open comes to the
/// front instead of opening twice. To add a window, give it a name in the list below and a function that opens it.
class AuxiliaryWindows
{
public:
    static constexpr std::size_t kDemodulators = 3; ///< that windows can be opened for

    /// @param owner the main window; outlives this, as does its focus return
    AuxiliaryWindows(FocusReturn &focusReturn, QWidget *owner) : m_focusReturn(focusReturn), m_owner(owner) {}
    /// Deletes the open windows; their flags still live then.
    ~AuxiliaryWindows();
    Q_DISABLE_COPY_MOVE(AuxiliaryWindows)

    void openCards(const QList<Card> &cards);
    /// @param link the link whose channels are named
    void openNaming(SerialPortController *link);
    /// @param position panel of the demodulator, from 0
    /// @param hasClockPhase whether its card has a clock phase instead of a clock polarity
    void openAdvancedSettings(int position, bool hasClockPhase, DmdChan *demodulator);
    void openEyeConst(int position, DmdChan *demodulator);
    void openTape(TapeChan *tape);
    /// Opens a further window each time.
    void openTmoip(TmoipCard *card);
    /// @param onClosed called once, when the operator closes the window
    void openCombinerZero(const std::function<void()> &onClosed);
    /// Deletes the window when the event loop comes to it.
    void endCombinerZero();
    /// Marks what all of them show as old, now and until this is called again.
    /// @param reason shown with the mark; empty takes it off
    void setStale(const QString &reason);
    /// Shows the present levels of @p combiner in the window, if it is open.
    void UpdateCmbZero(const CmbrChan &combiner);

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
        bool open = false; ///< cleared by the window when it goes, or by the function that ends it
    };

    /// Shows the window of this name, which @p make creates with the address of its flag unless there is one.
    template <typename Make>
    void open(std::size_t name, Make make);
    void prepare(QWidget *window);
    static void present(QWidget *window);
    void mark(QWidget *window) const;
    [[nodiscard]] QList<QPointer<QWidget>> windows() const;

    FocusReturn &m_focusReturn;
    QWidget *m_owner;
    std::array<Place, NameCount> m_places;
    QList<QPointer<QWidget>> m_tmoipWindows;
    int m_tmoipOpened = 0;
    QString m_staleReason;
};
