#pragma once

#include "simulator/radio/EyeSampler.h"

#include <QList>

namespace sim {

class DemodulatorUnit;
class Link;

/// Sends sample blocks of the demodulators on the eye link in turn, as many as the line carries.
class EyePort
{
public:
    /// `link` must outlive the port.
    EyePort(Link &link, quint32 seed) : m_link(link), m_sampler(seed) {}

    /// The demodulators whose output is sent. Not owned.
    void setDemodulators(const QList<const DemodulatorUnit *> &demodulators) { m_demodulators = demodulators; }
    /// Fills the transmit buffer for one step while any demodulator has its output on; to be called every step.
    void step();

private:
    [[nodiscard]] QByteArray frame(const DemodulatorUnit &demodulator);

    Link &m_link;
    EyeSampler m_sampler;
    QList<const DemodulatorUnit *> m_demodulators;
    qsizetype m_turn = 0;
};

} // namespace sim
