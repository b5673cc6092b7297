#pragma once

#include <QObject>

class SerialPortController;

/// Transmit worker of the remote link: writes the next message once the one before was answered or its time has passed,
/// and the port has room.
class TxmtRemoteCmdQueueReader : public QObject
{
    Q_OBJECT

public:
    TxmtRemoteCmdQueueReader(QObject *parent, SerialPortController *controller);

public Q_SLOTS:
    /// Runs once for every TrnsmtRemoteCmd() of the link.
    void CheckTxmtRemoteCmdQueue();

private:
    SerialPortController *m_controller;
};
