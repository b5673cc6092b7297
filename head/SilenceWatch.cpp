#include "head/SilenceWatch.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 kPromptMs = 3000; ///< a report this soon after the request for reports was caused by it
constexpr int kMostUselessReadings = 3;

} // namespace

SilenceWatch::SilenceWatch(Clock clock) : m_clock(std::move(clock)) {}

/// A single report does not end the back-off: it may be the only one for long.
void SilenceWatch::noteReport()
{
    const qint64 now = m_clock();
    const bool wasAskedFor = m_readingEnd != kNever && now - m_readingEnd < kPromptMs;
    const bool wasAway = std::exchange(m_wasAway, false);
    if (m_lastReport != kNever && !wasAway && !wasAskedFor)
        m_longestGap = std::max(m_longestGap, now - m_lastReport);
    m_lastReport = now;
    m_expectedSince = now;
    m_hasReported = true;
    m_uselessReadings = 0;
    if (m_readingEnd != kNever && m_patience.isOver(now - m_readingEnd, longestSilenceMs()))
        m_patience.reset();
}

void SilenceWatch::noteLoss()
{
    m_wasAway = true;
    m_uselessReadings = 0;
}

void SilenceWatch::endReading(bool isAcknowledged)
{
    m_readingEnd = m_clock();
    m_isAcknowledged = isAcknowledged;
    m_expectedSince = m_readingEnd;
}

bool SilenceWatch::isOver(bool isReporting)
{
    if (!isReportDue(isReporting)) {
        m_expectedSince = kNever;
        return false;
    }
    if (m_expectedSince == kNever)
        m_expectedSince = m_clock();
    if (!m_patience.isOver(silentMs(), longestSilenceMs()))
        return false;
    m_patience.lengthen();
    ++m_uselessReadings;
    return true;
}

/// A chassis that has never reported may have nothing to report.
bool SilenceWatch::isReportDue(bool isReporting) const
{
    return (!m_isAcknowledged && m_uselessReadings < kMostUselessReadings) || (m_hasReported && isReporting);
}

qint64 SilenceWatch::longestSilenceMs() const { return std::max(BackOff::kFirstMs, m_longestGap * 3 / 2); }
