#include "head/RcvdRemoteCmdQueueReader.h"

#include "channels/Channel.h"

#include <algorithm>
#include <memory>

RcvdRemoteCmdQueueReader::RcvdRemoteCmdQueueReader(ChannelLink &link, RemoteTransmitQueue &queue)
    : Dispatcher(link)
    , m_queue(queue)
{
}

void RcvdRemoteCmdQueueReader::CheckRcvdRemoteCmdQueue(RemoteCommand *command)
{
    const std::unique_ptr<const RemoteCommand> owned(command);
    if (!isFinished())
        route(*command);
    m_queue.release(command);
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
        command.owner()->ProcessCmd(command);
    else
        ParseChannels(command);
}

void RcvdRemoteCmdQueueReader::ParseChannels(const RemoteCommand &command)
{
    Channel *const target = directory().at(command.address());
    if (target && !command.isGarbled())
        deliver(target, command);
    else
        link().queueForClient(
            new RemoteCommand(nullptr, command.address(), command.mnemonic(), command.data(), false, true));
}

void RcvdRemoteCmdQueueReader::deliver(Channel *target, const RemoteCommand &command)
{
    const ChannelLink *const cards = target->link();
    const std::size_t before = cards->queuedCount();
    target->ProcessCmd(command);
    const std::size_t after = cards->queuedCount();
    if (after != before && command.status() == RemoteCommand::Received)
        m_lastCaused[cards] = after;
}

bool RcvdRemoteCmdQueueReader::isClientAhead() const
{
    return std::any_of(m_lastCaused.keyValueBegin(), m_lastCaused.keyValueEnd(),
                       [](const auto &entry) { return entry.second > entry.first->takenCount(); });
}
