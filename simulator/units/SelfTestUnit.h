#pragma once

#include "simulator/units/ChannelUnit.h"

namespace sim {

/// The built-in self-test, "S1": a test signal generator whose settings are kept and given back. It has no effect on
/// the signals on the air.
class SelfTestUnit : public ChannelUnit
{
    Q_OBJECT

public:
    explicit SelfTestUnit(QObject *parent = nullptr);
};

} // namespace sim
