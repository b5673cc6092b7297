#pragma once

#include <algorithm>
#include <deque>
#include <iterator>
#include <memory>
#include <utility>

/// The transmit side of one link: what waits, what is in flight, and whether the next one may go.
///
/// At most one message is in flight. It stays referenced here until takeInFlight(), or release(), which the receive
/// side calls just before it deletes the message.
template <typename Message>
class TransmitQueue
{
public:
    TransmitQueue() = default;
    TransmitQueue(const TransmitQueue &) = delete;
    TransmitQueue &operator=(const TransmitQueue &) = delete;
    ~TransmitQueue() { delete m_inFlight; }

    /// Takes ownership and marks the message as queued.
    void append(Message *message)
    {
        message->setStatus(Message::Queued);
        m_waiting.emplace_back(message);
        ++m_appendedCount;
    }

    /// Low priority: yields to other messages, but never starves.
    void appendInBackground(Message *message)
    {
        message->setStatus(Message::Queued);
        m_background.emplace_back(message);
    }

    /// Takes every message of the background that waits off the queue.
    [[nodiscard]] std::deque<std::unique_ptr<Message>> takeBackground() { return std::exchange(m_background, {}); }

    /// The next message, now sent and in flight; null while nothing waits or the one before is unfinished.
    [[nodiscard]] Message *takeNext()
    {
        if (waitingCount() == 0 || !m_readyToSend)
            return nullptr;
        const bool isPassing = !m_waiting.empty() && !m_background.empty() && m_passed < kMostPassing;
        const bool isFromBackground = !isPassing && !m_background.empty();
        m_passed = isPassing ? m_passed + 1 : 0;
        auto &waiting = isFromBackground ? m_background : m_waiting;
        m_inFlight = waiting.front().release();
        waiting.pop_front();
        m_inFlight->setStatus(Message::Sent);
        m_readyToSend = false;
        return m_inFlight;
    }

    /// The message written last and not yet released; its status is Sent while it waits for an answer.
    [[nodiscard]] Message *inFlight() const { return m_inFlight; }
    [[nodiscard]] bool isAwaitingAnswer() const { return m_inFlight && m_inFlight->status() == Message::Sent; }

    [[nodiscard]] std::size_t waitingCount() const { return m_waiting.size() + m_background.size(); }
    [[nodiscard]] std::size_t backgroundCount() const { return m_background.size(); }
    /// How many messages have been appended so far, not counting the background; grows only.
    [[nodiscard]] std::size_t appendedCount() const { return m_appendedCount; }
    /// How many of them have been taken so far.
    [[nodiscard]] std::size_t takenCount() const { return m_appendedCount - m_waiting.size(); }

    /// The message in flight is finished: the next one may go.
    void setReadyToSend() { m_readyToSend = true; }

    /// Forgets @p message if it is the one in flight; to be called before it is deleted.
    void release(const Message *message)
    {
        if (m_inFlight == message)
            m_inFlight = nullptr;
    }

    /// Takes every message that waits off the queue.
    [[nodiscard]] std::deque<std::unique_ptr<Message>> takeWaiting()
    {
        std::ranges::move(takeBackground(), std::back_inserter(m_waiting));
        return std::exchange(m_waiting, {});
    }

    /// The message in flight, which then is no longer referenced here.
    [[nodiscard]] Message *takeInFlight() { return std::exchange(m_inFlight, nullptr); }

protected:
    /// Calls @p function with every message that waits, oldest first.
    template <typename Function>
    void forEachWaiting(Function function) const
    {
        for (const auto &message : m_waiting)
            function(*message);
    }
    /// Puts @p message into the place of the first one that waits and for which @p predicate holds. Takes it over only
    /// if there is one.
    template <typename Predicate>
    [[nodiscard]] bool replaceFirst(Message *message, Predicate predicate)
    {
        const auto place = std::find_if(m_waiting.begin(), m_waiting.end(),
                                        [&predicate](const auto &waiting) { return predicate(*waiting); });
        if (place == m_waiting.end())
            return false;
        message->setStatus(Message::Queued);
        place->reset(message);
        return true;
    }
    /// Deletes every message that waits and for which @p predicate holds; called once for each, oldest first.
    template <typename Predicate>
    void removeIf(Predicate predicate)
    {
        std::erase_if(m_waiting, [&predicate](const auto &message) { return predicate(*message); });
    }

private:
    static constexpr int kMostPassing = 4;

    std::deque<std::unique_ptr<Message>> m_waiting;
    std::deque<std::unique_ptr<Message>> m_background;
    int m_passed = 0; ///< messages sent ahead of the background in a row
    std::size_t m_appendedCount = 0;
    Message *m_inFlight = nullptr;
    bool m_readyToSend = true;
};
