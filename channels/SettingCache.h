#pragma once

#include "channels/Catalogue.h"

#include <QList>
#include <QString>

/// The cached values of a channel, one a catalogue row, as wire text.
class SettingCache
{
public:
    static constexpr int kNoRow = -1;

    explicit SettingCache(Catalogue::Table catalogue);

    [[nodiscard]] Catalogue::Table catalogue() const { return m_catalogue; }
    [[nodiscard]] const Catalogue::Row &row(int row) const { return m_catalogue[std::size_t(row)]; }
    /// Row of a mnemonic; kNoRow if the catalogue does not hold it.
    [[nodiscard]] int rowOf(const QString &mnemonic) const;
    /// No flags for kNoRow.
    [[nodiscard]] Catalogue::Flags flagsOf(int row) const;

    [[nodiscard]] const QString &value(int row) const { return m_values[row].current; }
    [[nodiscard]] const QString &previous(int row) const { return m_values[row].previous; }
    /// Puts @p value into the cache; the one before becomes the previous value, unless the row keeps none.
    void store(int row, const QString &value);

private:
    struct Value
    {
        QString current;
        QString previous;
    };

    Catalogue::Table m_catalogue;
    QList<Value> m_values;
};
