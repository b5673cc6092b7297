#include "simulator/chassis/EyePort.h"

#include "simulator/links/FrameCutter.h"
#include "simulator/links/Link.h"
#include "simulator/units/DemodulatorUnit.h"

namespace sim {

namespace {
/// What the line sends in about two steps: enough not to run dry, and little enough not to send old blocks.
constexpr qsizetype kBytesAhead = 4096;
} // namespace

void EyePort::step()
{
    QList<const DemodulatorUnit *> sending;
    for (const DemodulatorUnit *demodulator : m_demodulators) {
        if (demodulator->eyeOutput() != DemodulatorUnit::EyeOutput::Off)
            sending.append(demodulator);
    }
    while (!sending.isEmpty() && m_link.hasClient() && m_link.pending() < kBytesAhead) {
        m_turn = (m_turn + 1) % sending.size();
        m_link.send(frame(*sending.at(m_turn)));
    }
}

QByteArray EyePort::frame(const DemodulatorUnit &demodulator)
{
    const Demodulator &source = demodulator.demodulator();
    QByteArray payload;
    QByteArray header = "DM" + QByteArray::number(demodulator.number());
    switch (demodulator.eyeOutput()) {
    case DemodulatorUnit::EyeOutput::Off:
        break;
    case DemodulatorUnit::EyeOutput::Constellation:
        payload = m_sampler.constellation(source);
        break;
    case DemodulatorUnit::EyeOutput::EyePattern:
        payload = m_sampler.eyePattern(source);
        break;
    case DemodulatorUnit::EyeOutput::SerialData:
        header += "SD";
        payload = m_sampler.serialData();
        break;
    }
    return Wire::kStx + header + payload.toHex().toUpper() + Wire::kEot;
}

} // namespace sim
