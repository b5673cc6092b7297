#pragma once

#include "link/LinkPort.h"
#include "link/RemoteTransmitQueue.h"

#include <QObject>

/// Base of the transmit workers of the links to the remote client: writes the next message once the one before was
/// answered or its time has passed, and the port has room.
class ClientTransmitWorker : public QObject
{
    Q_OBJECT

public:
    /// @param port,queue outlive the worker
    ClientTransmitWorker(LinkPort &port, RemoteTransmitQueue &queue) : m_port(port), m_queue(queue) {}

protected:
    void writeNext();

private:
    LinkPort &m_port;
    RemoteTransmitQueue &m_queue;
};
