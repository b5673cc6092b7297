#pragma once

#include <QByteArray>
#include <QList>
#include <QRandomGenerator>

namespace sim {

/// The faults set on the console: which requests are refused or ignored, which answers are lost or late, and which
/// messages are damaged. Random choices follow from the seed.
class FaultRules
{
public:
    /// Which requests a rule is for; an empty part matches everything.
    struct Target
    {
        QByteArray address;
        QByteArray mnemonic;
        /// From "R1:FREQ", "R1", or nothing for every request.
        [[nodiscard]] static Target read(const QByteArray &text);
        [[nodiscard]] bool matches(const QByteArray &toAddress, const QByteArray &toMnemonic) const;
    };
    /// Lose: the request is carried out, but its answer is not sent.
    enum class Fault { Refuse, Ignore, Lose };
    static constexpr int kEvery = -1; ///< as a count: until cancelled
    static constexpr int kAll = 100;  ///< percent
    static constexpr int kLongestDelayMs = 600'000;
    /// Which of the matching requests are affected.
    struct Share
    {
        int count = kEvery;
        int percent = kAll;
        int skipped = 0; ///< how many are let through first
    };
    struct Range
    {
        int least = 0;
        int most = 0;
    };

    explicit FaultRules(quint32 seed) : m_random(seed) {}

    /// From now on, `fault` applies to `share` of the matching requests.
    void add(Fault fault, const Target &target, const Share &share);
    void cancel(Fault fault);
    /// From now on, `percent` of the answers to matching requests are delayed by a random time in the range `ms`.
    void delay(const Range &ms, const Target &target, int percent);
    void cancelDelays() { m_delays.clear(); }
    /// The next `count` messages sent are damaged.
    void garble(int count) { m_garbleLeft = count; }

    /// Whether `fault` applies to this request; counts it.
    [[nodiscard]] bool strikes(Fault fault, const QByteArray &address, const QByteArray &mnemonic);
    /// Delay of the answer to this request in milliseconds.
    [[nodiscard]] int delayMs(const QByteArray &address, const QByteArray &mnemonic);
    /// `frame` (with start and end byte) as it is to be sent, damaged or not.
    [[nodiscard]] QByteArray onTheWire(QByteArray frame);

private:
    struct Rule
    {
        Fault fault;
        Target target;
        Share left;
    };
    struct Delay
    {
        Target target;
        Range ms;
        int percent;
    };

    [[nodiscard]] bool happens(int percent);

    QList<Rule> m_rules;
    QList<Delay> m_delays;
    int m_garbleLeft = 0;
    QRandomGenerator m_random;
};

} // namespace sim
