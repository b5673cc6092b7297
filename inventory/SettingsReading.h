#pragma once

#include "inventory/BackOff.h"
#include "link/StandardCommand.h"

#include <QElapsedTimer>
#include <QList>
#include <QSet>
#include <QString>

/// A reading of every setting, and what the queries tell that went unanswered in it.
///
/// Several in a row are settings that the chassis does not have, or it was away for a while and has forgotten what it
/// was told: one of each run, the probe, is asked once more behind the reading, and tells which. One that is missing
/// alone was lost on the line.
class SettingsReading
{
public:
    /// What is to be asked behind a reading.
    struct Advice
    {
        bool isAnew = false;            ///< everything
        QList<StandardCommand> queries; ///< these once more
        QList<StandardCommand> missing; ///< these went unanswered or were refused alone
    };

    void begin();
    /// Ends it early; it tells nothing.
    void giveUp();
    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    /// Whether a line that loses answers again and again has gone unread for so long that all is to be read anew.
    [[nodiscard]] bool isDueAnew() const;

    /// Notes how a query of the reading has ended.
    void note(const StandardCommand &query);
    /// All queries have ended.
    [[nodiscard]] Advice end();
    /// Whether the end of @p query tells if the chassis was away.
    [[nodiscard]] bool isProbe(const StandardCommand &query) const;
    /// Notes how any command behind the reading has ended.
    [[nodiscard]] Advice noteProbe(const StandardCommand &command);

private:
    bool m_isRunning = false;
    int m_unanswered = 0; ///< in a row
    QList<StandardCommand> m_missing;
    QList<StandardCommand> m_lost; ///< went unanswered in a row
    QList<StandardCommand> m_probes;
    QSet<QString> m_told; ///< queries that were answered in any reading
    QSet<QString> m_probedAgain;
    BackOff m_patience;        ///< lengthened by each reading in a row of which a probe was answered
    QElapsedTimer m_sinceLoss; ///< while all is still to be read anew for it
};
