#include "head/SettingsReading.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int kAwayQueries = 2; ///< so many unanswered in a row: the chassis may have been away for a while

} // namespace

void SettingsReading::begin()
{
    m_isRunning = true;
    m_unanswered = 0;
    m_missing.clear();
    m_lost.clear();
    m_probes.clear();
    m_probedAgain.clear();
    m_lossAt.reset();
}

void SettingsReading::giveUp()
{
    m_isRunning = false;
    m_probes.clear();
}

bool SettingsReading::isDue() const { return m_lossAt && m_patience.isOver(m_clock() - *m_lossAt); }

void SettingsReading::note(const StandardCommand &query)
{
    m_unanswered = query.status() == StandardCommand::TimedOut ? m_unanswered + 1 : 0;
    if (m_unanswered == kAwayQueries) {
        m_lost.append(m_missing.takeLast());
        m_probes.append(query);
    }
    if (query.status() == StandardCommand::Completed)
        m_answered.insert(query.commandText());
    if (m_unanswered >= kAwayQueries)
        m_lost.append(query);
    else if (query.status() != StandardCommand::Completed)
        m_missing.append(query);
}

SettingsReading::Advice SettingsReading::end()
{
    m_isRunning = false;
    if (m_probes.isEmpty())
        m_patience.reset();
    return { false, m_probes, std::exchange(m_missing, {}) };
}

bool SettingsReading::isProbe(const StandardCommand &query) const
{
    return std::ranges::find(m_probes, query.commandText(), &StandardCommand::commandText) != m_probes.end();
}

/// A setting that was answered before gets a second probe. The first time that a probe is answered, the chassis was
/// away. When it happens again, the line is lossy: the lost queries are repeated at once, and everything later.
SettingsReading::Advice SettingsReading::noteProbe(const StandardCommand &command)
{
    const auto probe = std::ranges::find(m_probes, command.commandText(), &StandardCommand::commandText);
    if (probe == m_probes.end())
        return {};
    if (command.status() == StandardCommand::TimedOut) {
        if (m_answered.contains(command.commandText()) && !m_probedAgain.contains(command.commandText())) {
            m_probedAgain.insert(command.commandText());
            return { false, { command }, {} };
        }
        m_probes.erase(probe);
        if (m_probes.isEmpty())
            m_patience.reset();
        return {};
    }
    m_probes.clear();
    const bool isFirst = !m_patience.isLengthened();
    m_patience.lengthen();
    if (isFirst)
        return { true, {}, {} };
    m_lossAt = m_clock();
    return { false, std::exchange(m_lost, {}), {} };
}
