#pragma once

#include "simulator/units/ChannelUnit.h"
#include "simulator/units/TmoipStreamUnit.h"

#include <functional>
#include <memory>
#include <vector>

namespace sim {

/// A telemetry-over-IP card, such as "TM1-0", with its three streams. New network settings take effect when they are
/// committed.
class TmoipCardUnit : public ChannelUnit
{
    Q_OBJECT

public:
    /// `number` from 1.
    TmoipCardUnit(int number, const std::function<quint32(int stream)> &seed, QObject *parent = nullptr);

    [[nodiscard]] int number() const { return m_number; }
    /// The card itself and its streams.
    [[nodiscard]] QList<ChannelUnit *> units();
    /// Applies the network settings; the network is down for a while.
    void commit();
    /// Advances simulated time; `bitRate` returns the bits a second of a stream, 0 for none.
    void step(const std::function<double(int stream)> &bitRate, double seconds);
    /// Discards network settings that were not committed.
    void loseVolatileState() override;

protected:
    [[nodiscard]] bool perform(const SettingRow &row, const QByteArray &value) override;
    void applied(const SettingRow &row) override;
    [[nodiscard]] QByteArray measure(const SettingRow &row) const override;

private:
    [[nodiscard]] QByteArray time() const;

    int m_number;
    std::vector<std::unique_ptr<TmoipStreamUnit>> m_streams;
    QByteArrayList m_inForce; // in the order of the network settings
    double m_seconds = 0;     // since power on
    double m_networkDown = 0; // seconds to go
    double m_searching = 0;   // seconds until the time source is found
};

} // namespace sim
