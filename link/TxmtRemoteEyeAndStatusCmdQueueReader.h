#pragma once

#include <QObject>

class SerialPortController;

/// Transmit worker of the remote eye-and-status link: one message a pass of the event loop, queries wait for the
/// client.
class TxmtRemoteEyeAndStatusCmdQueueReader : public QObject
{
    Q_OBJECT

public:
    TxmtRemoteEyeAndStatusCmdQueueReader(QObject *parent, SerialPortController *controller);

public Q_SLOTS:
    void CheckTxmtRemoteEyeAndStatusCmdQueue();

private:
    SerialPortController *m_controller;
};
