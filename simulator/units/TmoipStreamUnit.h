#pragma once

#include "simulator/radio/Noise.h"
#include "simulator/units/ChannelUnit.h"

#include <array>

namespace sim {

/// One PCM stream of a telemetry-over-IP card, "TM1-1" to "TM1-3" of the first: it packs a bit stream into packets and
/// counts them.
class TmoipStreamUnit : public ChannelUnit
{
    Q_OBJECT

public:
    /// `card` from 1, `number` 1 to 3.
    TmoipStreamUnit(int card, int number, quint32 seed, QObject *parent = nullptr);

    [[nodiscard]] int number() const { return m_number; }
    /// Advances simulated time with `bitRate` bits a second at the input, 0 without a clock.
    void step(double bitRate, bool networkIsUp, double seconds);
    [[nodiscard]] double bytesSent() const { return m_counters[BytesSent]; }
    [[nodiscard]] double bytesReceived() const { return m_counters[BytesReceived]; }
    void loseVolatileState() override;

protected:
    [[nodiscard]] QByteArray measure(const SettingRow &row) const override;

private:
    enum Counter { BytesSent, BytesReceived, BytesResent, Dropped, OutOfOrder, CounterCount };

    [[nodiscard]] bool isReliable() const;
    [[nodiscard]] double packetSize() const { return value("MTUS").toDouble(); }
    /// Packets a second.
    [[nodiscard]] double packetRate() const;
    void count(double packets);

    int m_number;
    Noise m_noise;
    QByteArray m_status;
    double m_bitRate = 0; // while it flows
    std::array<double, CounterCount> m_counters{};
};

} // namespace sim
