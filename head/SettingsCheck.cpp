#include "head/SettingsCheck.h"

#include "link/ChannelLink.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace {

constexpr qint64 kLateMs = 4'000;     ///< the latest answer, after its request
constexpr qint64 kTroubleMs = 8'000;  ///< after a time-out the end of a set may be the late answer to another one
constexpr qint64 kRecentMs = 5'000;   ///< age of sets that a stray acknowledgement may belong to
constexpr qint64 kSpacingMs = 1'000;  ///< between two checks of one setting
constexpr qint64 kSilentMs = 60'000;  ///< between two checks of a card that answers none of them
constexpr int kFailuresOfSilent = 12; ///< in a row, and a card counts as silent
constexpr qint64 kUnknownMs = 10'000; ///< between two checks of settings that their cards may not know
constexpr int kTriesOfKnown = std::numeric_limits<int>::max();
constexpr qsizetype kMostEntries = 2'000;

} // namespace

SettingsCheck::SettingsCheck(ChannelLink &link, Clock clock, QObject *parent)
    : QObject(parent)
    , m_link(link)
    , m_clock(std::move(clock))
{
    m_askTmr.setSingleShot(true);
    connect(&m_askTmr, &QTimer::timeout, this, &SettingsCheck::askNext);
}

void SettingsCheck::setActive(bool active)
{
    m_isActive = active;
    m_wasActive = m_wasActive || active;
    askNext();
}

bool SettingsCheck::isInTrouble() const { return m_clock() - m_trouble < kTroubleMs; }

void SettingsCheck::noteSet(const StandardCommand &set)
{
    prune();
    if (m_entries.size() >= kMostEntries)
        return;
    Entry &entry = entryFor(set.readingBack(), kTriesOfSet);
    entry.changed = m_clock();
    if (set.status() == StandardCommand::TimedOut || isInTrouble())
        doubt(entry);
}

bool SettingsCheck::noteEnd(const StandardCommand &command, bool isProbe)
{
    const bool isOwn = m_asked == &command;
    if (isOwn)
        m_asked = nullptr;
    const bool isQuery = command.type() == StandardCommand::Query;
    const bool isTimedOut = command.status() == StandardCommand::TimedOut;
    // The card does not know a query that was never answered.
    if (m_wasActive && isTimedOut && (!isQuery || (m_isActive && m_answeredOnce.contains(command.commandText()))))
        m_trouble = m_clock();
    if (command.status() == StandardCommand::Completed)
        m_cards.remove(command.address());
    if (!isQuery)
        return false;
    if (command.status() == StandardCommand::Failed && m_answeredOnce.contains(command.commandText()))
        noteStrayAnswer(); // most likely the late answer to a set
    if (command.status() == StandardCommand::Completed)
        answered(command.commandText());
    else
        failed(command, isProbe);
    askNext();
    return isOwn;
}

void SettingsCheck::noteStrayAnswer()
{
    if (!m_wasActive)
        return;
    m_trouble = m_clock();
    for (Entry &entry : m_entries) {
        if (m_trouble - entry.changed < kRecentMs)
            doubt(entry);
    }
}

void SettingsCheck::noteUnsolicited(const StandardCommand &message)
{
    if (!isInTrouble() || message.status() != StandardCommand::Received)
        return;
    const auto entry = m_entries.find(message.readingBack().commandText());
    if (entry != m_entries.end() && m_clock() - entry->changed < kRecentMs)
        doubt(*entry);
}

void SettingsCheck::addMissing(const StandardCommand &query) { doubt(entryFor(query, kTriesOfMissing)); }

void SettingsCheck::noteBackgroundDropped() { m_asked = nullptr; }

bool SettingsCheck::isInDoubt(const StandardCommand &set) const
{
    const auto entry = m_entries.constFind(set.readingBack().commandText());
    return entry != m_entries.cend() && entry->isInDoubt;
}

SettingsCheck::Entry &SettingsCheck::entryFor(const StandardCommand &query, int mostTries)
{
    Entry &entry = m_entries[query.commandText()];
    entry.query = query;
    const bool isKnown = m_answeredOnce.contains(query.commandText());
    entry.mostTries = isKnown ? kTriesOfKnown : std::max(entry.mostTries, mostTries);
    return entry;
}

void SettingsCheck::doubt(Entry &entry)
{
    if (!std::exchange(entry.isInDoubt, true)) {
        entry.tries = 0;
        entry.due = entry.asked + kSpacingMs;
    }
    askNext();
}

/// The answer may be a late one to an earlier query, from before the last set.
void SettingsCheck::answered(const QString &text)
{
    if (m_answeredOnce.size() < kMostEntries)
        m_answeredOnce.insert(text);
    const auto entry = m_entries.find(text);
    if (entry == m_entries.end() || !entry->isInDoubt)
        return;
    if (isUnknown(*entry))
        m_nextUnknown = 0; // it was lost on the line, and so may be the others
    entry->mostTries = kTriesOfKnown;
    if (m_clock() - entry->unanswered < kLateMs)
        entry->due = entry->unanswered + kLateMs;
    else
        entry->isInDoubt = false;
}

void SettingsCheck::failed(const StandardCommand &query, bool isProbe)
{
    const QString &text = query.commandText();
    auto entry = m_entries.find(text);
    if (entry == m_entries.end() || !entry->isInDoubt) {
        // A query of a late card, or one that follows another setting. A refusal may be a late answer to a set.
        const bool isKnown = m_answeredOnce.contains(text);
        const bool isLost = query.status() == StandardCommand::TimedOut
                                ? isKnown || query.priority() == StandardCommand::Priority::Normal
                                : isKnown && isInTrouble();
        if (isLost && !isProbe && query.owner() && m_isActive)
            addMissing(query);
        return;
    }
    const qint64 now = m_clock();
    if (query.status() == StandardCommand::TimedOut)
        entry->unanswered = now;
    ++entry->tries;
    entry->due = now + (entry->tries < kFailuresOfSilent ? kLateMs : kSilentMs);
    if (query.status() == StandardCommand::TimedOut && !isUnknown(*entry)) {
        Card &card = m_cards[query.address()];
        card.notBefore = now + (++card.failures < kFailuresOfSilent ? kLateMs : kSilentMs);
    }
    if (entry->tries >= entry->mostTries)
        m_entries.erase(entry);
}

/// Whether it is checked only because it was not answered at start.
bool SettingsCheck::isUnknown(const Entry &entry) { return entry.mostTries == kTriesOfMissing; }

qint64 SettingsCheck::dueOf(const Entry &entry) const
{
    return std::max(entry.due, isUnknown(entry) ? m_nextUnknown : m_cards.value(entry.query.address()).notBefore);
}

void SettingsCheck::askNext()
{
    if (!m_isActive || m_asked)
        return;
    const qint64 now = m_clock();
    const auto isSooner = [this, now](const Entry &one, const Entry &other) {
        const qint64 oneDue = std::max(dueOf(one), now);
        const qint64 otherDue = std::max(dueOf(other), now);
        // Of those that are due, the ones that failed before come last.
        return std::tuple(oneDue, isUnknown(one), one.asked) < std::tuple(otherDue, isUnknown(other), other.asked);
    };
    Entry *next = nullptr;
    for (Entry &entry : m_entries) {
        if (entry.isInDoubt && (!next || isSooner(entry, *next)))
            next = &entry;
    }
    if (!next)
        return;
    if (const qint64 due = dueOf(*next); due > now) {
        m_askTmr.start(static_cast<int>(due - now));
        return;
    }
    if (isUnknown(*next))
        m_nextUnknown = now + kUnknownMs;
    next->asked = now;
    auto *const query = new StandardCommand(next->query);
    query->setPriority(StandardCommand::Priority::Background);
    m_asked = query;
    m_link.AddCmdToTxmtCmdQueue(query);
}

void SettingsCheck::prune()
{
    const qint64 oldest = m_clock() - kRecentMs;
    m_entries.removeIf([oldest](const auto &item) { return !item->isInDoubt && item->changed < oldest; });
}
