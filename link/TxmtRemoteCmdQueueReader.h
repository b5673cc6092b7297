#pragma once

#include <QObject>

class SerialPortController;

/// Transmit worker of the remote link: one message a pass of the event loop, queries wait for the client.
class TxmtRemoteCmdQueueReader : public QObject
{
    Q_OBJECT

public:
    TxmtRemoteCmdQueueReader(QObject *parent, SerialPortController *controller);

public Q_SLOTS:
    void CheckTxmtRemoteCmdQueue();

private:
    SerialPortController *m_controller;
};
