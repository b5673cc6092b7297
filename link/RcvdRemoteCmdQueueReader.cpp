#include "link/RcvdRemoteCmdQueueReader.h"

#include "link/SerialPortController.h"

RcvdRemoteCmdQueueReader::RcvdRemoteCmdQueueReader(QObject *parent, SerialPortController *controller)
    : QObject(parent)
    , m_controller(controller)
{
}

void RcvdRemoteCmdQueueReader::CheckRcvdRemoteCmdQueue(RemoteCommand *command)
{
    m_controller->txmtRemoteCmdQueue().release(command);
    delete command;
}
