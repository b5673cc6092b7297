#include "head/TxmtCmdQueueReader.h"

void TxmtCmdQueueReader::CheckTxmtCmdQueue()
{
    const StandardCommand *command = m_queue.takeNext();
    if (!command)
        return;
    if (command->type() == StandardCommand::Marker)
        m_port.startTimeOut(command->timeOutMs());
    else
        m_port.write(command->timeOutMs(), command->commandBytes());
}
