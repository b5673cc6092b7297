// The transmit queue towards a slow client. Each byte of the input is one step.

#include "fuzzing/Fuzz.h"
#include "link/RemoteTransmitQueue.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <deque>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int kKeys = 8;

/// Appends and takes as a link does, and knows what has to come out.
class Model : public RemoteTransmitQueue
{
public:
    void step(std::uint8_t code)
    {
        const int kind = code >> 5;
        const int detail = code & 0x1f;
        if (kind <= 2)
            appendValue(detail % kKeys);
        else if (kind == 3)
            appendSeries(detail * 600);
        else if (kind == 4)
            appendAnswer();
        else
            for (int i = 0; i <= detail && kind >= 6; ++i)
                takeOne();
        if (kind == 5)
            takeOne();
        check();
    }

    bool takeOne()
    {
        const std::unique_ptr<RemoteCommand> taken(takeNext());
        if (!taken)
            return false;
        setReadyToSend();
        release(taken.get());
        const int number = taken->data().section(u' ', 0, 0).toInt();
        if (taken->isAnswer()) {
            Fuzz::require(!m_answers.empty() && m_answers.front() == number, "answers come out in order, none lost");
            m_answers.pop_front();
        } else if (taken->isReplaceable()) {
            m_lastOut[taken->mnemonic()] = number;
        } else {
            Fuzz::require(number > m_lastOfSeries, "a series keeps its order");
            m_lastOfSeries = number;
        }
        return true;
    }

    void end()
    {
        while (takeOne()) {
        }
        Fuzz::require(m_answers.empty(), "every answer comes out");
        Fuzz::require(m_lastOut == m_lastIn, "the newest of each value comes out last");
    }

private:
    RemoteCommand *message(const QString &mnemonic, const QString &padding = {})
    {
        return new RemoteCommand(nullptr, u"R1"_s, mnemonic, QString::number(++m_count) + u' ' + padding, true);
    }
    void appendValue(int key)
    {
        RemoteCommand *const value = message(QString::number(key));
        m_lastIn[value->mnemonic()] = m_count;
        appendForSlowClient(value);
    }
    void appendSeries(int size)
    {
        RemoteCommand *const block = message(u"0"_s, QString(size, u'x'));
        block->setReplaceable(false);
        appendForSlowClient(block);
    }
    void appendAnswer()
    {
        m_answers.push_back(++m_count);
        appendForSlowClient(
            new RemoteCommand(nullptr, u"R1"_s, u"0"_s, QString::number(m_count), m_count % 2 == 0, true));
    }
    void check() const
    {
        qsizetype seriesSize = 0;
        std::size_t series = 0;
        forEachWaiting([&](const RemoteCommand &m) {
            const bool isSeries = !m.isAnswer() && !m.isReplaceable();
            series += isSeries;
            seriesSize += isSeries ? m.commandText().size() : 0;
        });
        Fuzz::require(answerCount() == m_answers.size(), "no answer is dropped");
        Fuzz::require(seriesSize <= kMaxSeriesSize, "a series is bounded");
        Fuzz::require(waitingCount() <= m_answers.size() + series + kKeys, "one of each value waits");
        Fuzz::require(takenCount() + waitingCount() == appendedCount(), "the counts agree");
    }

    int m_count = 0;
    int m_lastOfSeries = 0;
    std::deque<int> m_answers;
    QHash<QString, int> m_lastIn;
    QHash<QString, int> m_lastOut;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Model queue;
    std::for_each_n(data, std::min<std::size_t>(size, 300), [&queue](std::uint8_t code) { queue.step(code); });
    queue.end();
    return 0;
}
