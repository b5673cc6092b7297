#pragma once

#include "simulator/radio/Tuner.h"
#include "simulator/units/ChannelUnit.h"

namespace sim {

/// The tape interface, "T1". The tape always runs: a receiver switched to playback gets a steady carrier.
class TapeUnit : public ChannelUnit
{
    Q_OBJECT

public:
    explicit TapeUnit(QObject *parent = nullptr);

    /// The signal played into receiver `number`, 1 or 2, at the gain that is set.
    [[nodiscard]] Tuner::Playback playback(int number) const;
};

} // namespace sim
