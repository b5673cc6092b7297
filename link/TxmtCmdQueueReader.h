#pragma once

#include <QObject>

class SerialPortController;

/// Transmit worker of a standard-protocol link: writes the next command once the one before is finished.
class TxmtCmdQueueReader : public QObject
{
    Q_OBJECT

public:
    TxmtCmdQueueReader(QObject *parent, SerialPortController *controller);

public Q_SLOTS:
    /// Runs once for every TrnsmtCmd() of the link.
    void CheckTxmtCmdQueue();

private:
    SerialPortController *m_controller;
};
