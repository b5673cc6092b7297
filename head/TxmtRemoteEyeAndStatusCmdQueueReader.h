#pragma once

#include "head/ClientTransmitWorker.h"

/// Transmit worker of the remote eye-and-status link.
class TxmtRemoteEyeAndStatusCmdQueueReader : public ClientTransmitWorker
{
    Q_OBJECT

public:
    using ClientTransmitWorker::ClientTransmitWorker;

public Q_SLOTS:
    /// Runs once for every TrnsmtRemoteEyeAndStatusCmd() of the link.
    void CheckTxmtRemoteEyeAndStatusCmdQueue() { writeNext(); }
};
