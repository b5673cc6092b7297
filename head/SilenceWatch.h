#pragma once

#include "head/BackOff.h"
#include "head/Clock.h"

#include <QtGlobal>

/// Decides from the reports of a chassis, and from their absence, whether it was switched off and has to be read again.
///
/// A chassis that was off reports nothing until reports are requested. One that has nothing to report, or reports
/// rarely, must not be re-read endlessly: the longest gap between two reports counts, each re-read doubles the time to
/// the next one, and a chassis that neither accepts the request for reports nor reports is re-read three times at most.
class SilenceWatch
{
public:
    explicit SilenceWatch(Clock clock);

    /// An unsolicited reading has arrived.
    void noteReport();
    /// A command timed out: the chassis may have been away.
    void noteTimeOut() { m_wasAway = true; }
    /// The link was lost.
    void noteLoss();

    /// Settings are being read, or have been read and the request for reports behind them has ended.
    void beginReading() { m_expectedSince = kNever; }
    void endReading(bool isAcknowledged);

    /// Whether everything is to be read again; to be called every second after a pass over all settings.
    /// @param isReporting whether a channel currently gets unsolicited readings
    [[nodiscard]] bool isOver(bool isReporting);
    /// How long expected reports have been missing, in ms; 0 if none are expected.
    [[nodiscard]] qint64 silentMs() const { return m_expectedSince == kNever ? 0 : m_clock() - m_expectedSince; }

private:
    static constexpr qint64 kNever = -1;

    [[nodiscard]] bool isReportDue(bool isReporting) const;
    [[nodiscard]] qint64 longestSilenceMs() const;

    Clock m_clock;
    qint64 m_expectedSince = kNever; ///< or the last report
    qint64 m_lastReport = kNever;
    qint64 m_readingEnd = kNever;
    qint64 m_longestGap = 0; ///< between two reports of a chassis that was present
    int m_uselessReadings = 0;
    bool m_isAcknowledged = true; ///< the request for reports
    bool m_hasReported = false;
    bool m_wasAway = false; ///< since the last report
    BackOff m_patience;     ///< lengthened by each re-read
};
