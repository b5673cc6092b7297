#pragma once

#include <QList>
#include <QString>

#include <functional>

/// The settings that a panel or window shows, one row a mnemonic. The same rows fill it and follow the reports.
class SettingTable
{
public:
    using Show = std::function<void(const QString &value)>;

    /// Adds a setting of @p channel, which outlives the table.
    /// @param get a member function for the value in force, as wire text
    template <typename C, typename Get>
    void add(QLatin1StringView mnemonic, const C *channel, Get get, Show show)
    {
        m_rows.append({ mnemonic, [channel, get]() -> QString { return (channel->*get)(); }, std::move(show) });
    }

    /// Shows every value in force, row by row.
    void fill() const
    {
        for (const Row &row : m_rows)
            row.show(row.inForce());
    }
    /// Shows the value in force of one setting.
    void showInForce(const QString &mnemonic) const
    {
        for (const Row &row : m_rows) {
            if (mnemonic == row.mnemonic)
                row.show(row.inForce());
        }
    }
    /// Shows a reported value; a mnemonic without a row is ignored.
    void show(const QString &mnemonic, const QString &value) const
    {
        for (const Row &row : m_rows) {
            if (mnemonic == row.mnemonic)
                row.show(value);
        }
    }

private:
    struct Row
    {
        QLatin1StringView mnemonic;
        std::function<QString()> inForce;
        Show show;
    };

    QList<Row> m_rows;
};
