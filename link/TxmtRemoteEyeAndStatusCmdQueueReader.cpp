#include "link/TxmtRemoteEyeAndStatusCmdQueueReader.h"

#include "link/SerialPortController.h"

TxmtRemoteEyeAndStatusCmdQueueReader::TxmtRemoteEyeAndStatusCmdQueueReader(QObject *parent,
                                                                           SerialPortController *controller)
    : QObject(parent)
    , m_controller(controller)
{
}

void TxmtRemoteEyeAndStatusCmdQueueReader::CheckTxmtRemoteEyeAndStatusCmdQueue()
{
    if (m_controller->isPortFull())
        return; // comes again when the port has written
    if (const RemoteCommand *command = m_controller->txmtRemoteCmdQueue().takeNext())
        m_controller->WriteToPort(command->timeOutMs(), command->commandBytes());
}
