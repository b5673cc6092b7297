#pragma once

#include "simulator/radio/EyeSampler.h"

#include <QList>

namespace sim {

class DemodulatorUnit;
class Link;

/// Sends the demodulators' sample blocks on the eye link, as many as the line carries, in turn.
class EyePort
{
public:
    /// `link` must outlive the port.
    EyePort(Link &link, quint32 seed) : m_link(link), m_sampler(seed) {}

    /// Whose output it sends. Not owned.
    void setDemodulators(const QList<const DemodulatorUnit *> &demodulators) { m_demodulators = demodulators; }
    /// Keeps the line busy for one step ahead while any demodulator has its output on; to be called every step.
    void step();

private:
    [[nodiscard]] QByteArray frame(const DemodulatorUnit &demodulator);

    Link &m_link;
    EyeSampler m_sampler;
    QList<const DemodulatorUnit *> m_demodulators;
    qsizetype m_turn = 0;
};

} // namespace sim
