#pragma once

#include <QList>

#include <cstddef>

class Channel;
class RemoteCommand;
class StandardCommand;

/// A link as its channels see it: where they send, and what they may rely on.
class ChannelLink
{
public:
    /// Queues a command for the card; the link takes ownership.
    virtual void AddCmdToTxmtCmdQueue(StandardCommand *command) = 0;
    /// Queues a message for the remote client; the link takes ownership. A client that is slower than the reports
    /// misses values that newer ones have replaced, and the oldest of a series; never an answer.
    virtual void queueForClient(RemoteCommand *message) = 0;

    /// The channels that share the link, in the order of their discovery.
    [[nodiscard]] virtual const QList<Channel *> &channels() const = 0;
    /// Whether the card may hold other settings than its channels here: the link was lost, or settings are re-read.
    [[nodiscard]] virtual bool isStale() const = 0;
    /// Whether the card may hold something else than the value that @p set would replace.
    [[nodiscard]] virtual bool isInDoubt(const StandardCommand &set) const = 0;

    /// Notes the end of a set that its channel has processed; the setting is read back if that end may be wrong.
    virtual void noteSet(const StandardCommand &set) = 0;
    /// Notes an unsolicited reading; neither answers nor reported settings count.
    virtual void noteReport() = 0;

    /// How many commands of normal priority were queued so far, and how many of them have left the queue. Both only
    /// grow.
    [[nodiscard]] virtual std::size_t queuedCount() const = 0;
    [[nodiscard]] virtual std::size_t takenCount() const = 0;

    /// Whether answers for the remote client wait in the queue.
    [[nodiscard]] virtual bool isClientAwaitingAnswers() const = 0;
    /// Whether what the remote client sent stays unread until what it caused before is on its way.
    [[nodiscard]] virtual bool isClientHeldBack() const = 0;

protected:
    ChannelLink() = default;
    ~ChannelLink() = default;
    ChannelLink(const ChannelLink &) = delete;
    ChannelLink &operator=(const ChannelLink &) = delete;
};
