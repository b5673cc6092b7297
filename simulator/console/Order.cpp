#include "simulator/console/Order.h"

#include "simulator/units/SettingRow.h"

namespace sim {

namespace {

constexpr double kLongestSeconds = 3600;

/// Whether a word is a share and not an address.
bool isShare(const QByteArray &word)
{
    return !word.isEmpty() && (word.front() == '#' || (word.front() >= '0' && word.front() <= '9'));
}

/// "3" for the next three, "#3" for the third alone, "3%" for a random share, empty for all.
std::optional<FaultRules::Share> readShare(const QByteArray &word)
{
    if (word.isEmpty())
        return FaultRules::Share{};
    const bool isPercent = word.endsWith('%');
    const bool isOrdinal = word.startsWith('#');
    const int number = readIndex(word.sliced(isOrdinal ? 1 : 0).chopped(isPercent ? 1 : 0));
    if (number < 1 || (isPercent && (isOrdinal || number > FaultRules::kAll)))
        return std::nullopt;
    if (isPercent)
        return FaultRules::Share{ .percent = number };
    return isOrdinal ? FaultRules::Share{ .count = 1, .skipped = number - 1 } : FaultRules::Share{ .count = number };
}

} // namespace

QByteArray Order::tail(qsizetype from) const
{
    qsizetype start = 0;
    for (qsizetype index = 0; index < from; ++index)
        start = m_line.indexOf(m_words.at(index), start) + m_words.at(index).size();
    return m_line.mid(start).trimmed();
}

bool Order::readSeconds(qsizetype index, double &seconds) const
{
    return readDecimal(word(index), seconds) && seconds >= 0 && seconds <= kLongestSeconds;
}

std::optional<FaultRules::Range> Order::range(qsizetype index) const
{
    const QByteArray text = word(index);
    const qsizetype dash = text.indexOf('-');
    const FaultRules::Range range{ readIndex(text.first(dash < 0 ? text.size() : dash)),
                                   readIndex(text.sliced(dash + 1)) };
    const bool isRange = range.least >= 0 && range.most >= range.least && range.most <= FaultRules::kLongestDelayMs;
    return isRange ? std::optional(range) : std::nullopt;
}

std::optional<Order::Victims> Order::victims(qsizetype index) const
{
    const bool isForAll = isShare(word(index));
    const QByteArray text = word(isForAll ? index : index + 1);
    const auto share = readShare(text);
    return share ? std::optional(Victims{ isForAll ? QByteArray() : word(index), text, *share }) : std::nullopt;
}

} // namespace sim
