#pragma once

#include "head/Dispatcher.h"
#include "link/StandardCommand.h"
#include "link/TransmitQueue.h"

class UniversalChan;

/// Receive dispatcher of a standard-protocol link: decides which channel processes a command that has ended or an
/// unsolicited message. A command for nobody is dropped.
class RcvdCmdQueueReader : public Dispatcher
{
    Q_OBJECT

public:
    /// @param queue refers to the command in flight until it is deleted here; outlives the dispatcher
    RcvdCmdQueueReader(ChannelLink &link, TransmitQueue<StandardCommand> &queue);

    /// Not owned; set when the first version reply has created it.
    void setSystemChannel(UniversalChan *channel) { m_systemChannel = channel; }

public Q_SLOTS:
    /// Takes ownership of @p command.
    void CheckRcvdCmdQueue(StandardCommand *command);

Q_SIGNALS:
    /// The answer to a version query, or the end of the end-of-settings marker.
    void startupCommandEnded(const StandardCommand &command);

private:
    void route(const StandardCommand &command);
    void routeSystem(const StandardCommand &command);

    TransmitQueue<StandardCommand> &m_queue;
    UniversalChan *m_systemChannel = nullptr;
};
