#pragma once

#include "link/SerialPortReader.h"

#include <QQueue>
#include <QTimer>

#include <functional>

/// Reads the remote client: hands its messages on one at a time, and none while the head is busy with earlier ones.
class ClientReader : public SerialPortReader
{
    Q_OBJECT

public:
    /// @param isHeldBack whether the client has to wait
    ClientReader(QSerialPort *port, FrameHandler frameHandler, std::function<bool()> isHeldBack);

    void reset() override;

protected:
    void read() override;

private:
    std::function<bool()> m_isHeldBack;
    QQueue<QByteArray> m_frames; ///< read and not yet handed on
    QTimer m_readAgainTmr;
};
