#include "head/ClientTransmitWorker.h"

void ClientTransmitWorker::writeNext()
{
    if (m_port.isFull())
        return; // called again when the port has written
    if (const RemoteCommand *message = m_queue.takeNext())
        m_port.write(message->timeOutMs(), message->commandBytes());
}
