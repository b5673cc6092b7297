#include "simulator/chassis/SpectralCard.h"

#include "simulator/links/Link.h"

namespace sim {

namespace {

constexpr int kAnalysers = 3;
constexpr int kBlockMs = 200;
constexpr int kStatusMs = 1000;
/// With more than this in the transmit buffer a block is skipped, so that blocks are never old.
constexpr qsizetype kMostBytesWaiting = 4096;

} // namespace

bool SpectralCard::build(const QJsonObject &family, quint32 seed, QString &error)
{
    if (!add(&m_system, family, error))
        return false;
    for (int number = 1; m_system.lists("0170") && number <= kAnalysers; ++number) {
        m_analysers.push_back(std::make_unique<SpectralUnit>(number, seed + quint32(number)));
        if (!add(m_analysers.back().get(), family, error))
            return false;
    }
    if (!m_system.lists("0136"))
        return true;
    m_selfTest = std::make_unique<SelfTestUnit>();
    return add(m_selfTest.get(), family, error);
}

bool SpectralCard::add(Unit *unit, const QJsonObject &family, QString &error)
{
    return m_units.add(unit, family.value(QString::fromLatin1(unit->address())).toObject(), error);
}

void SpectralCard::powerOff()
{
    m_port.setAwake(false);
    m_units.loseVolatileState();
}

void SpectralCard::step(qint64 count, int ms, const RadioScene &scene, const SpectralUnit::Tuning &tuning)
{
    m_port.step(ms);
    const auto isDue = [now = count * ms, ms](qint64 offset, qint64 period) { return (now + offset) % period < ms; };
    for (size_t index = 0; index < m_analysers.size(); ++index) {
        const qint64 offset = qint64(index) * kBlockMs / kAnalysers;
        SpectralUnit &analyser = *m_analysers.at(index);
        if (analyser.isSending() && isDue(offset, kBlockMs) && m_link.hasClient() &&
            m_link.pending() < kMostBytesWaiting)
            analyser.sendBlock(scene, tuning);
    }
    if (m_selfTest && m_system.isReporting() && isDue(0, kStatusMs))
        m_selfTest->reportStatus();
}

} // namespace sim
