#pragma once

#include <QRandomGenerator>

namespace sim {

/// The seeds of all that is random in a chassis. Each part has its own, so that one draw more here changes nothing
/// there.
class Seeds
{
public:
    explicit Seeds(quint32 seed) : m_seed(seed) {}

    [[nodiscard]] quint32 scene() const { return derived(0); }
    [[nodiscard]] quint32 faults() const { return derived(1); }
    [[nodiscard]] quint32 bootChatter() const { return derived(2); }
    [[nodiscard]] quint32 eyeLink() const { return derived(3); }
    [[nodiscard]] quint32 demodulator(int number) const { return derived(10 + quint32(number)); }
    /// `card` from 1, `stream` 1 to 3.
    [[nodiscard]] quint32 tmoipStream(int card, int stream) const
    {
        return derived(20 + 100 * quint32(card - 1) + quint32(stream));
    }
    [[nodiscard]] quint32 spectralCard() const { return derived(30); }

private:
    [[nodiscard]] quint32 derived(quint32 part) const
    {
        QRandomGenerator random(m_seed);
        random.discard(part);
        return random.generate();
    }

    quint32 m_seed;
};

} // namespace sim
