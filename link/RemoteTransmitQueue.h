#pragma once

#include "link/RemoteCommand.h"
#include "link/TransmitQueue.h"

/// Transmit queue of a link to the remote client, with bounds for a slow client.
class RemoteTransmitQueue : public TransmitQueue<RemoteCommand>
{
public:
    static constexpr std::size_t kMaxMessages = 256;                  ///< waiting; with more the client counts as slow
    static constexpr qsizetype kMaxSeriesSize = qsizetype(64) * 1024; ///< characters; sent in less than a second

    /// Appends, and drops what a slow client can do without: of values in force and queries all but the newest, of
    /// series the oldest beyond kMaxSeriesSize. Answers are kept.
    void appendForSlowClient(RemoteCommand *message);

    /// How many answers wait.
    [[nodiscard]] std::size_t answerCount() const;

private:
    [[nodiscard]] bool replaceOlder(RemoteCommand *message);
    void limitSeries();
};
