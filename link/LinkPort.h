#pragma once

#include "link/LinkGuard.h"
#include "link/LinkKind.h"

#include <QByteArray>
#include <QObject>
#include <QSerialPort>
#include <QString>
#include <QTimer>

/// The port of one serial link, with its guard against pulled cables and the time-out of the message in flight.
///
/// A device that does not open is tried every second, as after a pulled cable.
class LinkPort : public QObject
{
    Q_OBJECT

public:
    explicit LinkPort(LinkKind::PORT_TYPE type);

    /// Opens the device; success is signalled by opened(), later by found().
    void open();

    [[nodiscard]] QSerialPort &port() { return m_port; }
    [[nodiscard]] QString name() const { return m_port.portName(); }
    /// Whether the device has ever been opened.
    [[nodiscard]] bool hasOpened() const { return m_hasOpened; }
    /// Whether the device is not there: not yet, or the cable is pulled.
    [[nodiscard]] bool isLost() const { return m_guard.isLost(); }
    /// Whether the port holds so much that the far end cannot be reading; nothing more is given to it then.
    [[nodiscard]] bool isFull() const;

    /// Starts the time-out, unless @p timeOutMs is 0, and writes; skipped while the port is not open.
    void write(int timeOutMs, const QByteArray &bytes);
    /// Waits until all that was written has left, at most @p timeOutMs. For the end of the program, when no event loop
    /// is left to write it.
    void drain(int timeOutMs);

    /// The time-out of the message in flight; single-shot.
    [[nodiscard]] QTimer &timeOutTimer() { return m_timeOutTmr; }
    /// Starts or restarts it; 0 starts none.
    void startTimeOut(int ms);

Q_SIGNALS:
    /// The device is open for the first time.
    void opened();
    /// The cable is pulled and the port is closed.
    void lost();
    /// The device is there, for the first time or again, and the port is open.
    void found();
    /// An error on a healthy line: reading has to be started once more.
    void strayError();

private:
    void noteFound();

    QSerialPort m_port;
    LinkGuard m_guard;
    QTimer m_timeOutTmr;
    bool m_hasOpened = false;
};
