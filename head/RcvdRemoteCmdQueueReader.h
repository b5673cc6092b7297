#pragma once

#include "head/Dispatcher.h"
#include "link/RemoteCommand.h"
#include "link/RemoteTransmitQueue.h"

#include <QHash>

/// Receive dispatcher of the remote link: hands messages and answers of the client to their channel, and refuses those
/// that are for no channel.
class RcvdRemoteCmdQueueReader : public Dispatcher
{
    Q_OBJECT

public:
    /// @param queue refers to the message in flight until it is deleted here; outlives the dispatcher
    RcvdRemoteCmdQueueReader(ChannelLink &link, RemoteTransmitQueue &queue);

    /// Whether a command that the client has caused still waits on a link to the chassis.
    [[nodiscard]] bool isClientAhead() const;

public Q_SLOTS:
    /// Takes ownership of @p command.
    void CheckRcvdRemoteCmdQueue(RemoteCommand *command);

private:
    void route(const RemoteCommand &command);
    void deliverToOwner(const RemoteCommand &command);
    /// Hands the message to the channel of its address, or refuses it: there is none, or the message is garbled.
    void ParseChannels(const RemoteCommand &command);
    void deliver(Channel *target, const RemoteCommand &command);

    RemoteTransmitQueue &m_queue;
    /// By link to the chassis: how many commands had been queued when the client caused its last one.
    QHash<const ChannelLink *, std::size_t> m_lastCaused;
};
