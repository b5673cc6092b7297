#pragma once

#include "link/RemoteCommand.h"
#include "link/TransmitQueue.h"

/// Transmit queue of a link to the remote client, with bounds for a client that takes less than it is told.
class RemoteTransmitQueue : public TransmitQueue<RemoteCommand>
{
public:
    static constexpr std::size_t kMaxMessages = 256;       ///< so many wait: the client is behind
    static constexpr qsizetype kMaxSeriesSize = 64 * 1024; ///< characters; the line takes less than a second for it

    /// Appends, and drops what a client that is behind can do without: of values in force and questions all but the
    /// newest, of series the oldest, as far as they exceed kMaxSeriesSize. Answers are kept.
    void appendForSlowClient(RemoteCommand *message);

    /// How many answers wait.
    [[nodiscard]] std::size_t answerCount() const;

private:
    [[nodiscard]] bool replaceOlder(RemoteCommand *message);
    void limitSeries();
};
