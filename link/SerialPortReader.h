#pragma once

#include "link/FrameDecoder.h"

#include <QObject>

#include <functional>

class QSerialPort;

/// Reads one port and cuts the bytes into frames.
class SerialPortReader : public QObject
{
    Q_OBJECT

public:
    using FrameHandler = FrameDecoder::FrameHandler;

    /// @param port         outlives the reader
    /// @param frameHandler gets the content of every frame
    SerialPortReader(QSerialPort *port, FrameDecoder decoder, FrameHandler frameHandler);

    /// Forgets a frame begun on a line that was lost.
    virtual void reset();

public Q_SLOTS:
    void ReadPort();

protected:
    /// Reads what the open port holds.
    virtual void read();

    [[nodiscard]] QSerialPort &port() const { return *m_port; }
    [[nodiscard]] FrameDecoder &decoder() { return m_decoder; }
    void handle(const QByteArray &frame) const { m_frameHandler(frame); }

private:
    QSerialPort *m_port;
    FrameDecoder m_decoder;
    FrameHandler m_frameHandler;
};
