#include "channels/SettingCache.h"

#include <algorithm>

SettingCache::SettingCache(Catalogue::Table catalogue) : m_catalogue(catalogue)
{
    m_values.reserve(static_cast<qsizetype>(catalogue.size()));
    for (const Catalogue::Row &row : catalogue)
        m_values.append({ row.initial, row.initialPrevious });
}

int SettingCache::rowOf(const QString &mnemonic) const
{
    const auto row = std::ranges::find_if(
        m_catalogue, [&mnemonic](const Catalogue::Row &candidate) { return mnemonic == candidate.name; });
    return row != m_catalogue.end() ? static_cast<int>(row - m_catalogue.begin()) : kNoRow;
}

Catalogue::Flags SettingCache::flagsOf(int row) const
{
    return row == kNoRow ? Catalogue::Flags() : m_catalogue[std::size_t(row)].flags;
}

void SettingCache::store(int row, const QString &value)
{
    Value &held = m_values[row];
    if (!flagsOf(row).testFlag(Catalogue::NoPrevious))
        held.previous = held.current;
    held.current = value;
}
