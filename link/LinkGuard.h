#pragma once

#include <QObject>
#include <QTimer>

class QSerialPort;

/// Watches an open port for a pulled cable, and for its return, and waits for a device that was not there at first.
///
/// The port's own errors are no proof: after a hang-up some versions of the serial library report errors without end,
/// others spin silently, and a healthy line has errors too. So the descriptor is polled, on every error and twice a
/// second. A port that has hung up is closed once and reopened every second until that succeeds.
class LinkGuard : public QObject
{
    Q_OBJECT

public:
    /// @param port outlives the guard
    LinkGuard(QSerialPort *port, QObject *parent);

    /// Begins to watch a port that has just been opened.
    void watch();
    /// Begins to wait for the device of a port that could not be opened.
    void await() { m_reopenTmr.start(); }
    /// Whether the device is not there, or not there any more.
    [[nodiscard]] bool isLost() const { return m_reopenTmr.isActive(); }

public Q_SLOTS:
    /// Checks whether the port has hung up; the timer does it twice a second.
    void check();
    /// Tries to open a port whose device was not there; the timer does it every second.
    void reopen();

Q_SIGNALS:
    /// The port has hung up and is closed.
    void lost();
    /// The device is there again and the port is open.
    void found();
    /// An error on a healthy line.
    void strayError();

private:
    void handleError();
    [[nodiscard]] bool hasHungUp() const;

    QSerialPort *m_port;
    QTimer m_checkTmr;
    QTimer m_errorTmr; ///< the port must not be closed inside its own error signal
    QTimer m_reopenTmr;
    int m_strayErrors = 0;
};
