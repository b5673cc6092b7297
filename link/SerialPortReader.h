#pragma once

#include "link/FrameDecoder.h"
#include "link/FrameText.h"

#include <QObject>
#include <QQueue>
#include <QTimer>

class QSerialPort;
class SerialPortController;

/// Reads one link: cuts the bytes into frames and, on the standard links, ties each answer to the command in flight.
///
/// Noise, late answers and stray acknowledgements never disturb the command in flight; they go on as unsolicited
/// messages. What the remote client sends is handed on one message at a time, and not at all while the head is busy
/// with what it sent before.
class SerialPortReader : public QObject
{
    Q_OBJECT

public:
    SerialPortReader(QObject *parent, SerialPortController *controller, QSerialPort *port);

    /// Forgets a frame begun on a line that was lost.
    void reset();

public Q_SLOTS:
    void ReadPort();

private:
    void readClient();
    void HandleFrame(const QByteArray &frame);
    void HandleStandardCommand(const QByteArray &frame);
    void HandleRemoteCommand(const QByteArray &frame);
    void HandleEyeConstData(const QByteArray &frame);

    void handleAcknowledgement(const FrameText::Decoded &frame);
    void handleMessage(const FrameText::Decoded &frame);
    void completeCommandInFlight(const FrameText::Decoded &frame);

    SerialPortController *m_controller;
    QSerialPort *m_port;
    FrameDecoder m_decoder;
    QQueue<QByteArray> m_clientFrames; ///< read and not yet handed on
    QTimer m_readAgainTmr;             ///< goes on with what the client has sent
};
