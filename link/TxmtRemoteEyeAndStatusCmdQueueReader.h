#pragma once

#include <QObject>

class SerialPortController;

/// Transmit worker of the remote eye-and-status link: writes the next message once the time of the one before has
/// passed and the port has room.
class TxmtRemoteEyeAndStatusCmdQueueReader : public QObject
{
    Q_OBJECT

public:
    TxmtRemoteEyeAndStatusCmdQueueReader(QObject *parent, SerialPortController *controller);

public Q_SLOTS:
    /// Runs once for every TrnsmtRemoteEyeAndStatusCmd() of the link.
    void CheckTxmtRemoteEyeAndStatusCmdQueue();

private:
    SerialPortController *m_controller;
};
