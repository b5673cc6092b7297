#pragma once

#include "simulator/chassis/Steps.h"

namespace sim {

/// How many messages of a flood leave in each step.
class Flood
{
public:
    /// `rate` messages a second, for some seconds.
    void start(int rate, double seconds)
    {
        m_rate = rate;
        m_stepsLeft = stepsIn(seconds);
        m_due = 0;
    }
    void stop() { m_stepsLeft = 0; }
    /// Passes one step and takes the messages due by then.
    [[nodiscard]] int takeDue()
    {
        if (m_stepsLeft == 0)
            return 0;
        --m_stepsLeft;
        m_due += m_rate * kStepSeconds;
        const int due = int(m_due);
        m_due -= due;
        return due;
    }

private:
    double m_rate = 0;
    int m_stepsLeft = 0;
    double m_due = 0;
};

} // namespace sim
