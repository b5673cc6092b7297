#pragma once

#include <QObject>

#include <initializer_list>
#include <memory>
#include <vector>

class QSocketNotifier;

/// Brings the signals that end a program into its event loop.
class EndSignals : public QObject
{
    Q_OBJECT

public:
    /// Handles the @p ending signals from here on and ignores the @p ignored ones. A SIGHUP that was already ignored
    /// stays ignored: the program is to outlive its terminal. Only one object may exist at a time.
    EndSignals(std::initializer_list<int> ending, std::initializer_list<int> ignored);
    /// Ignores the ending signals from here on: the program is about to end anyway.
    ~EndSignals() override;

    /// Whether an ending signal has arrived, handled by the event loop or not.
    [[nodiscard]] static bool haveArrived();
    /// For poll(): readable when a signal arrives, until the event loop handles it. -1 while there is no object.
    [[nodiscard]] static int descriptor();

Q_SIGNALS:
    /// Comes again for a repeated signal.
    void arrived();

private:
    void handle(void (*handler)(int)) const;
    void read();

    std::vector<int> m_ending;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
