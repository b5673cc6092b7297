#pragma once

#include "link/LinkPort.h"
#include "link/StandardCommand.h"
#include "link/TransmitQueue.h"

#include <QObject>

/// Transmit worker of a standard-protocol link: writes the next command once the one before has ended.
class TxmtCmdQueueReader : public QObject
{
    Q_OBJECT

public:
    /// @param port,queue outlive the worker
    TxmtCmdQueueReader(LinkPort &port, TransmitQueue<StandardCommand> &queue) : m_port(port), m_queue(queue) {}

public Q_SLOTS:
    /// Runs once for every TrnsmtCmd() of the link.
    void CheckTxmtCmdQueue();

private:
    LinkPort &m_port;
    TransmitQueue<StandardCommand> &m_queue;
};
