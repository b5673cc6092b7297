#include "link/RemoteTransmitQueue.h"

void RemoteTransmitQueue::appendForSlowClient(RemoteCommand *message)
{
    if (message->isReplaceable())
        removeIf(
            [message](const RemoteCommand &older) { return older.isReplaceable() && older.isAboutSameAs(*message); });
    append(message);
    if (!message->isReplaceable() && !message->isAnswer())
        limitSeries();
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
