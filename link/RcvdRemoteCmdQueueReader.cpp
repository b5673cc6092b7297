#include "link/RcvdRemoteCmdQueueReader.h"

#include "channels/Channel.h"
#include "inventory/ChannelDirectory.h"
#include "link/SerialPortController.h"

#include <algorithm>

RcvdRemoteCmdQueueReader::RcvdRemoteCmdQueueReader(QObject *parent, SerialPortController *controller)
    : QObject(parent)
    , m_controller(controller)
    , m_directory(std::make_unique<ChannelDirectory>())
{
}

RcvdRemoteCmdQueueReader::~RcvdRemoteCmdQueueReader() = default;

void RcvdRemoteCmdQueueReader::SetChanLists() { m_directory->assign(m_controller->channels()); }

void RcvdRemoteCmdQueueReader::CheckRcvdRemoteCmdQueue(RemoteCommand *command)
{
    const std::unique_ptr<const RemoteCommand> owned(command);
    if (!m_controller->isEnding())
        route(*command);
    m_controller->txmtRemoteCmdQueue().release(command);
}

void RcvdRemoteCmdQueueReader::route(const RemoteCommand &command)
{
    const bool isQuery = command.type() == RemoteCommand::Query;
    const bool isValue = command.type() == RemoteCommand::Value;
    switch (command.status()) {
    case RemoteCommand::Received:
        if (isQuery || isValue)
            ParseChannels(command);
        break;
    case RemoteCommand::Completed:
        if (isQuery || isValue)
            deliverToOwner(command);
        break;
    case RemoteCommand::Failed:
        if (isQuery)
            deliverToOwner(command);
        break;
    case RemoteCommand::TimedOut:
        if (isQuery && command.owner())
            deliverToOwner(command);
        break;
    case RemoteCommand::Created:
    case RemoteCommand::Queued:
    case RemoteCommand::Sent:
    case RemoteCommand::Unparsed:
        break;
    }
}

void RcvdRemoteCmdQueueReader::deliverToOwner(const RemoteCommand &command)
{
    if (command.owner())
        deliver(command.owner(), command);
    else
        ParseChannels(command);
}

void RcvdRemoteCmdQueueReader::ParseChannels(const RemoteCommand &command)
{
    Channel *const target = m_directory->at(command.address());
    if (target && !command.isGarbled())
        deliver(target, command);
    else
        m_controller->AddCmdToTxmtRemoteCmdQueue(
            new RemoteCommand(nullptr, command.address(), command.mnemonic(), command.data(), false, true));
}

void RcvdRemoteCmdQueueReader::deliver(Channel *target, const RemoteCommand &command)
{
    const SerialPortController *const link = target->link();
    const std::size_t before = link->txmtCmdQueue().appendedCount();
    target->ProcessCmd(command);
    const std::size_t after = link->txmtCmdQueue().appendedCount();
    if (after != before && command.status() == RemoteCommand::Received)
        m_lastCaused[link] = after;
}

bool RcvdRemoteCmdQueueReader::isClientAhead() const
{
    return std::any_of(m_lastCaused.keyValueBegin(), m_lastCaused.keyValueEnd(),
                       [](const auto &entry) { return entry.second > entry.first->txmtCmdQueue().takenCount(); });
}
