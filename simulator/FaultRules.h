#pragma once

#include <QByteArray>
#include <QList>
#include <QRandomGenerator>

/// The faults ordered from the console: which requests are refused, ignored or answered late, and which messages are
/// damaged on their way out.
class FaultRules
{
public:
    /// Which requests a rule is for; an empty part matches everything.
    struct Target
    {
        QByteArray address;
        QByteArray mnemonic;
        [[nodiscard]] bool matches(const QByteArray &toAddress, const QByteArray &toMnemonic) const;
    };
    enum class Fault { Refuse, Ignore };
    static constexpr int kEvery = -1; ///< as a count: until cancelled

    explicit FaultRules(quint32 seed) : m_random(seed) {}

    /// The next `count` requests that match suffer `fault`.
    void add(Fault fault, const Target &target, int count);
    void cancel(Fault fault);
    /// Answers to matching requests come `ms` milliseconds late; 0 cancels all delays.
    void delay(int ms, const Target &target);
    /// The next `count` messages sent are damaged.
    void garble(int count) { m_garbleLeft = count; }

    /// Whether this request suffers `fault`; uses up one of its count.
    [[nodiscard]] bool strikes(Fault fault, const QByteArray &address, const QByteArray &mnemonic);
    [[nodiscard]] int delayMs(const QByteArray &address, const QByteArray &mnemonic) const;
    /// `frame` (with start and end byte) as it shall go out.
    [[nodiscard]] QByteArray onTheWire(QByteArray frame);

private:
    struct Rule
    {
        Fault fault;
        Target target;
        int left;
    };
    struct Delay
    {
        Target target;
        int ms;
    };

    QList<Rule> m_rules;
    QList<Delay> m_delays;
    int m_garbleLeft = 0;
    QRandomGenerator m_random;
};
