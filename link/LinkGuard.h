#pragma once

#include <QObject>
#include <QTimer>

class QSerialPort;

/// Watches an open port for a pulled cable, and for its return, and waits for a device that was not there at first.
///
/// The port's own errors do not tell: after a hang-up some versions of the serial library report one error after the
/// other for ever, others spin without a word, and a healthy line has errors too. So the descriptor is asked, on every
/// error and twice a second. A port that has hung up is closed once and opened again every second until that works.
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
    /// Asks whether the port has hung up; what the timer does twice a second.
    void check();
    /// Tries to open a port whose device was not there; what the timer does every second.
    void reopen();

Q_SIGNALS:
    /// The port has hung up and is closed.
    void lost();
    /// The device is there again and the port is open.
    void found();
    /// An error on a line that is well.
    void strayError();

private:
    void handleError();
    [[nodiscard]] bool hasHungUp() const;

    QSerialPort *m_port;
    QTimer m_checkTmr;
    QTimer m_errorTmr; ///< closing has to wait until the port is done with the error
    QTimer m_reopenTmr;
    int m_strayErrors = 0;
};
