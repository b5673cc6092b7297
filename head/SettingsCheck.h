#pragma once

#include "head/Clock.h"
#include "link/StandardCommand.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

class ChannelLink;

/// Reads back settings whose value at the card is in doubt, so that lost and late answers leave no wrong value in a
/// channel.
///
/// A set is never repeated. One that timed out may have been carried out, and its late acknowledgement may be taken for
/// that of the next set. So a setting is in doubt when its set timed out, when its set ended while a late answer could
/// still come, and when it was set within the seconds before an acknowledgement that nobody waits for. Each setting in
/// doubt is queried once, in the background, one after the other; a query that fails is retried with back-off.
///
/// A query that was not answered at start may have been lost, or its setting is unknown to the card. Such queries are
/// repeated once, one every few seconds, because an unknown setting blocks the line for a second.
class SettingsCheck : public QObject
{
    Q_OBJECT

public:
    /// @param link carries the queries; outlives this
    SettingsCheck(ChannelLink &link, Clock clock, QObject *parent);

    /// Starts or stops the queries; settings in doubt are kept meanwhile.
    void setActive(bool active);
    /// Queues the check that is due next, if one is due and none is under way. A timer calls it in time.
    void askNext();

    /// A set has ended and its channel has processed it.
    void noteSet(const StandardCommand &set);
    /// Any command has ended.
    /// @param isProbe it is repeated elsewhere if needed
    /// @return whether it was one of these checks
    bool noteEnd(const StandardCommand &command, bool isProbe);
    /// An acknowledgement has arrived while nothing waited for one.
    void noteStrayAnswer();
    /// An unsolicited message has arrived. It may be the late answer to a query, older than the last set.
    void noteUnsolicited(const StandardCommand &message);
    /// A query was not answered, and nothing else repeats it.
    void addMissing(const StandardCommand &query);
    /// The waiting queries of the background were dropped.
    void noteBackgroundDropped();

    /// Whether the card may hold something else than the value that @p set would replace.
    [[nodiscard]] bool isInDoubt(const StandardCommand &set) const;

private:
    struct Entry
    {
        StandardCommand query;
        bool isInDoubt = false;
        int tries = 0;
        int mostTries = 0;         ///< without an answer
        qint64 changed = kLongAgo; ///< when the last set of it ended
        qint64 asked = kLongAgo;
        qint64 unanswered = kLongAgo; ///< when a query of it timed out last
        qint64 due = 0;
    };
    /// Outcome of the checks of one address.
    struct Card
    {
        int failures = 0; ///< in a row
        qint64 notBefore = 0;
    };

    static constexpr qint64 kLongAgo = -1'000'000'000;
    static constexpr int kTriesOfMissing = 1; ///< of a query that was not answered at start
    static constexpr int kTriesOfSet = 5;     ///< of one that was set and never answered

    [[nodiscard]] bool isInTrouble() const;
    Entry &entryFor(const StandardCommand &query, int mostTries);
    void doubt(Entry &entry);
    void answered(const QString &text);
    void failed(const StandardCommand &query, bool isProbe);
    [[nodiscard]] qint64 dueOf(const Entry &entry) const;
    [[nodiscard]] static bool isUnknown(const Entry &entry);
    void prune();

    ChannelLink &m_link;
    const Clock m_clock;
    QTimer m_askTmr;
    bool m_isActive = false;
    bool m_wasActive = false;                 ///< ever; before, acknowledgements belong to what was written at opening
    qint64 m_trouble = kLongAgo;              ///< last time-out or stray answer
    const StandardCommand *m_asked = nullptr; ///< the check that is queued or in flight
    QHash<QString, Entry> m_entries;          ///< settings in doubt or lately set, by query text
    QHash<QString, Card> m_cards;             ///< by address
    qint64 m_nextUnknown = 0;                 ///< when the next possibly unknown setting is due
    QSet<QString> m_answeredOnce;
};
