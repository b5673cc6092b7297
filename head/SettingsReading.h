#pragma once

#include "head/BackOff.h"
#include "head/Clock.h"
#include "link/StandardCommand.h"

#include <QList>
#include <QSet>
#include <QString>

#include <optional>
#include <utility>

/// One pass over all settings, and what its unanswered queries imply.
///
/// Several in a row are settings that the chassis does not have, or the chassis was away for a while and has lost its
/// state: one query of each such run, the probe, is repeated behind the pass, and its end decides. A query that failed
/// alone was lost on the line.
class SettingsReading
{
public:
    /// What is to be queried behind a pass.
    struct Advice
    {
        bool everything = false;        ///< all settings
        QList<StandardCommand> queries; ///< these once more
        QList<StandardCommand> missing; ///< these failed alone
    };

    explicit SettingsReading(Clock clock) : m_clock(std::move(clock)) {}

    void begin();
    /// Stops it early; nothing follows from it.
    void giveUp();
    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    /// Whether everything is to be read once more, because a lossy line has not been read for long enough.
    [[nodiscard]] bool isDue() const;

    /// Notes how a query of the pass has ended.
    void note(const StandardCommand &query);
    /// All queries have ended.
    [[nodiscard]] Advice end();
    /// Whether the end of @p query decides if the chassis was away.
    [[nodiscard]] bool isProbe(const StandardCommand &query) const;
    /// Notes how any command behind the pass has ended.
    [[nodiscard]] Advice noteProbe(const StandardCommand &command);

private:
    Clock m_clock;
    bool m_isRunning = false;
    int m_unanswered = 0; ///< in a row
    QList<StandardCommand> m_missing;
    QList<StandardCommand> m_lost; ///< went unanswered in a row
    QList<StandardCommand> m_probes;
    QSet<QString> m_answered; ///< queries that were answered in any pass
    QSet<QString> m_probedAgain;
    BackOff m_patience;             ///< lengthened by each pass in a row of which a probe was answered
    std::optional<qint64> m_lossAt; ///< when a probe was answered, while everything is still to be read for it
};
