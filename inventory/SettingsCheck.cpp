#include "inventory/SettingsCheck.h"

#include "link/SerialPortController.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 kLateMs = 4'000;     ///< answers that are later than this after their request do not come
constexpr qint64 kTroubleMs = 8'000;  ///< so long after a time-out the end of a set may be that of another one
constexpr qint64 kRecentMs = 5'000;   ///< sets that an acknowledgement out of place may belong to
constexpr qint64 kSpacingMs = 1'000;  ///< between two checks of one setting
constexpr qint64 kSilentMs = 60'000;  ///< between two checks of a card that answers none
constexpr int kFailuresOfSilent = 12; ///< in a row, and a card counts as silent
constexpr int kTriesOfUnknown = 2;    ///< of a setting that the card may not have
constexpr qsizetype kMostEntries = 2'000;

} // namespace

SettingsCheck::SettingsCheck(SerialPortController *link, QObject *parent) : QObject(parent), m_link(link)
{
    m_clock.start();
    m_askTmr.setSingleShot(true);
    connect(&m_askTmr, &QTimer::timeout, this, &SettingsCheck::askNext);
}

void SettingsCheck::setActive(bool active)
{
    m_isActive = active;
    askNext();
}

bool SettingsCheck::isInTrouble() const { return m_clock.elapsed() - m_trouble < kTroubleMs; }

void SettingsCheck::noteSet(const StandardCommand &set, bool isQueried)
{
    prune();
    const StandardCommand query = set.readingBack();
    if (!isQueried && m_entries.size() >= kMostEntries)
        return;
    Entry &entry = entryFor(query);
    entry.changed = m_clock.elapsed();
    entry.isLasting = isQueried || m_answeredOnce.contains(query.commandText());
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
    // A query that was never answered is one that the card does not know.
    if (m_isActive && isTimedOut && (!isQuery || m_answeredOnce.contains(command.commandText())))
        m_trouble = m_clock.elapsed();
    if (!isQuery)
        return false;
    if (command.status() == StandardCommand::Failed && m_answeredOnce.contains(command.commandText()))
        noteStrayAnswer(); // the late one to a set, most likely
    if (command.status() == StandardCommand::Completed)
        answered(command.commandText());
    else
        failed(command, isProbe);
    askNext();
    return isOwn;
}

void SettingsCheck::noteStrayAnswer()
{
    if (!m_isActive)
        return;
    m_trouble = m_clock.elapsed();
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
    if (entry != m_entries.end() && m_clock.elapsed() - entry->changed < kRecentMs)
        doubt(*entry);
}

void SettingsCheck::addMissing(const StandardCommand &query)
{
    Entry &entry = entryFor(query);
    entry.isLasting = entry.isLasting || m_answeredOnce.contains(query.commandText());
    doubt(entry);
}

void SettingsCheck::noteBackgroundDropped() { m_asked = nullptr; }

bool SettingsCheck::isInDoubt(const StandardCommand &set) const
{
    const auto entry = m_entries.constFind(set.readingBack().commandText());
    return entry != m_entries.cend() && entry->isInDoubt;
}

SettingsCheck::Entry &SettingsCheck::entryFor(const StandardCommand &query)
{
    Entry &entry = m_entries[query.commandText()];
    entry.query = query;
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

/// What answered may be the late answer to a query before it, from before the last set.
void SettingsCheck::answered(const QString &text)
{
    if (m_answeredOnce.size() < kMostEntries)
        m_answeredOnce.insert(text);
    const auto entry = m_entries.find(text);
    if (entry == m_entries.end() || !entry->isInDoubt)
        return;
    m_cards.remove(entry->query.address());
    if (m_clock.elapsed() - entry->unanswered < kLateMs)
        entry->due = entry->unanswered + kLateMs;
    else
        entry->isInDoubt = false;
}

void SettingsCheck::failed(const StandardCommand &query, bool isProbe)
{
    const QString &text = query.commandText();
    auto entry = m_entries.find(text);
    if (entry == m_entries.end() || !entry->isInDoubt) {
        // Of a card that came late, or one that follows another setting. A refusal may be a late answer to a set.
        const bool isKnown = m_answeredOnce.contains(text);
        const bool isLost =
            query.status() == StandardCommand::TimedOut ? isKnown || !query.isInBackground() : isKnown && isInTrouble();
        if (isLost && !isProbe && query.owner() && m_isActive)
            addMissing(query);
        return;
    }
    const qint64 now = m_clock.elapsed();
    if (query.status() == StandardCommand::TimedOut)
        entry->unanswered = now;
    if (++entry->tries >= kTriesOfUnknown && !entry->isLasting) {
        m_entries.erase(entry);
        return;
    }
    Card &card = m_cards[query.address()];
    card.notBefore = now + (++card.failures < kFailuresOfSilent ? kLateMs : kSilentMs);
}

qint64 SettingsCheck::dueOf(const Entry &entry) const
{
    return std::max(entry.due, m_cards.value(entry.query.address()).notBefore);
}

void SettingsCheck::askNext()
{
    if (!m_isActive || m_asked)
        return;
    Entry *next = nullptr;
    for (Entry &entry : m_entries) {
        if (entry.isInDoubt && (!next || dueOf(entry) < dueOf(*next)))
            next = &entry;
    }
    if (!next)
        return;
    const qint64 now = m_clock.elapsed();
    if (const qint64 due = dueOf(*next); due > now) {
        m_askTmr.start(static_cast<int>(due - now));
        return;
    }
    next->asked = now;
    auto *const query = new StandardCommand(next->query);
    m_asked = query;
    m_link->queueInBackground(query);
}

void SettingsCheck::prune()
{
    const qint64 oldest = m_clock.elapsed() - kRecentMs;
    m_entries.removeIf([oldest](const auto &item) { return !item->isInDoubt && item->changed < oldest; });
}
