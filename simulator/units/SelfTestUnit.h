#pragma once

#include "simulator/units/ChannelUnit.h"

namespace sim {

/// The built-in self-test, "S1": a test signal generator. Its settings are stored and returned, but do not change the
/// simulated signals.
class SelfTestUnit : public ChannelUnit
{
    Q_OBJECT

public:
    explicit SelfTestUnit(QObject *parent = nullptr);
};

} // namespace sim
