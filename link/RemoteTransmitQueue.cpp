#include "link/RemoteTransmitQueue.h"

void RemoteTransmitQueue::appendForSlowClient(RemoteCommand *message)
{
    if (message->isReplaceable() && replaceOlder(message))
        return;
    append(message);
    if (!message->isReplaceable() && !message->isAnswer())
        limitSeries();
}

/// The newest takes the place of the oldest; otherwise a value that changes faster than the queue moves would never be
/// sent. Behind an answer about the same value it keeps its place, so that the answer does not look newer.
bool RemoteTransmitQueue::replaceOlder(RemoteCommand *message)
{
    bool isAnswered = false;
    forEachWaiting(
        [&](const RemoteCommand &m) { isAnswered = isAnswered || (m.isAnswer() && m.isAboutSameAs(*message)); });
    const auto isOlder = [message](const RemoteCommand &m) {
        return &m != message && m.isReplaceable() && m.isAboutSameAs(*message);
    };
    const bool isReplaced = !isAnswered && replaceFirst(message, isOlder);
    removeIf(isOlder);
    return isReplaced;
}

void RemoteTransmitQueue::limitSeries()
{
    const auto isSeries = [](const RemoteCommand &m) { return !m.isReplaceable() && !m.isAnswer(); };
    qsizetype excess = -kMaxSeriesSize;
    forEachWaiting([&](const RemoteCommand &m) { excess += isSeries(m) ? m.commandText().size() : 0; });
    removeIf([&](const RemoteCommand &m) {
        if (excess <= 0 || !isSeries(m))
            return false;
        excess -= m.commandText().size();
        return true;
    });
}

std::size_t RemoteTransmitQueue::answerCount() const
{
    std::size_t count = 0;
    forEachWaiting([&count](const RemoteCommand &m) { count += m.isAnswer() ? 1 : 0; });
    return count;
}
