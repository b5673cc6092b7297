#include "link/TxmtCmdQueueReader.h"

#include "link/SerialPortController.h"

TxmtCmdQueueReader::TxmtCmdQueueReader(QObject *parent, SerialPortController *controller)
    : QObject(parent)
    , m_controller(controller)
{
}

void TxmtCmdQueueReader::CheckTxmtCmdQueue()
{
    const StandardCommand *command = m_controller->txmtCmdQueue().takeNext();
    if (!command)
        return;
    if (command->type() == StandardCommand::Marker)
        m_controller->StartTimeOutTmr(command->timeOutMs());
    else
        m_controller->WriteToPort(command->timeOutMs(), command->commandBytes());
}
