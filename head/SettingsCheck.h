#pragma once

#include "link/StandardCommand.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

class ChannelLink;

/// Reads settings back whose value at the card is in doubt, so that the channels hold what the cards hold, whatever
/// happens to answers.
///
/// A set is never repeated. One that timed out may have been carried out, and its late acknowledgement may be taken for
/// that of the next set. So a setting is in doubt when its set timed out, when its set ended while a late answer could
/// still come, and when it was set within the seconds before an acknowledgement that nobody waits for. Each setting in
/// doubt is asked once, in the background, one after the other; a query that fails is repeated with back-off.
///
/// What went unanswered at start may be lost, or unknown to the card: such settings are asked once more, one every few
/// seconds, because each that is unknown blocks the line for a second.
class SettingsCheck : public QObject
{
    Q_OBJECT

public:
    /// @param link carries the queries; outlives this
    SettingsCheck(ChannelLink &link, QObject *parent);

    /// Asks from now on, or waits; settings in doubt are kept meanwhile.
    void setActive(bool active);

    /// A set has ended and its channel has seen it.
    void noteSet(const StandardCommand &set);
    /// Any command has ended.
    /// @param isProbe somebody else repeats it if need be
    /// @return whether it was a query of this
    bool noteEnd(const StandardCommand &command, bool isProbe);
    /// An acknowledgement has come that nobody waits for.
    void noteStrayAnswer();
    /// A message has come that answers no query. It may be the late answer to one, older than the last set.
    void noteUnsolicited(const StandardCommand &message);
    /// A query went unanswered that nothing else repeats.
    void addMissing(const StandardCommand &query);
    /// What waited in the background is not asked any more.
    void noteBackgroundDropped();

    /// Whether the card may hold something else than what @p set, a set of it, would replace.
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
    /// How the checks of one address fare.
    struct Card
    {
        int failures = 0; ///< in a row
        qint64 notBefore = 0;
    };

    static constexpr qint64 kLongAgo = -1'000'000'000;
    static constexpr int kTriesOfMissing = 1; ///< of a setting that went unanswered at start
    static constexpr int kTriesOfSet = 5;     ///< of one that was set and never answered

    [[nodiscard]] bool isInTrouble() const;
    Entry &entryFor(const StandardCommand &query, int mostTries);
    void doubt(Entry &entry);
    void answered(const QString &text);
    void failed(const StandardCommand &query, bool isProbe);
    void askNext();
    [[nodiscard]] qint64 dueOf(const Entry &entry) const;
    [[nodiscard]] static bool isUnknown(const Entry &entry);
    void prune();

    ChannelLink &m_link;
    QElapsedTimer m_clock;
    QTimer m_askTmr;
    bool m_isActive = false;
    bool m_wasActive = false;    ///< ever; the chassis acknowledges what was written before anybody waits for it
    qint64 m_trouble = kLongAgo; ///< when something went wrong last
    const StandardCommand *m_asked = nullptr; ///< the query on its way
    QHash<QString, Entry> m_entries;          ///< settings in doubt or lately set, by query text
    QHash<QString, Card> m_cards;             ///< by address
    qint64 m_nextUnknown = 0;                 ///< when the next setting that its card may not know is asked
    QSet<QString> m_answeredOnce;
};
