#pragma once

#include "head/ClientTransmitWorker.h"

/// Transmit worker of the remote link.
class TxmtRemoteCmdQueueReader : public ClientTransmitWorker
{
    Q_OBJECT

public:
    using ClientTransmitWorker::ClientTransmitWorker;

public Q_SLOTS:
    /// Runs once for every TrnsmtRemoteCmd() of the link.
    void CheckTxmtRemoteCmdQueue() { writeNext(); }
};
