#pragma once

#include <QFlags>
#include <QLatin1StringView>

#include <array>
#include <span>

/// What a channel class knows, as data: one row a mnemonic, in the order in which the start-up queries go out.
namespace Catalogue {

enum class Kind {
    Setting, ///< stored when it differs and reported by SettingChanged, refused or not
    Silent,  ///< stored when it differs, never reported: it is read when it is needed
    Status,  ///< every report is stored, none is signalled: the panels read it on their timer
    Event,   ///< reported by SettingChanged, not stored
    Special, ///< handled by the class itself
};

enum Flag {
    NoFlags = 0x0,
    Queried = 0x1,        ///< asked for at start-up
    Settable = 0x2,       ///< has a setter
    ToSlaves = 0x4,       ///< its setter copies the command to slaved channels
    NoPrevious = 0x8,     ///< the value before the last change is not kept
    AlwaysSent = 0x10,    ///< its setter sends the value already held as well
    OnlyDifferent = 0x20, ///< of a status value: a report of the value held leaves the previous one alone
};
Q_DECLARE_FLAGS(Flags, Flag)
Q_DECLARE_OPERATORS_FOR_FLAGS(Flags)

struct Row
{
    QLatin1StringView name;
    Kind kind;
    Flags flags;
    QLatin1StringView initial = QLatin1StringView("Unknown");
    QLatin1StringView initialPrevious = initial;
};

using Table = std::span<const Row>;

/// Position of a mnemonic; -1 if the table does not hold it.
constexpr int find(Table table, QLatin1StringView name)
{
    for (std::size_t row = 0; row < table.size(); ++row) {
        const QLatin1StringView candidate = table[row].name;
        if (std::string_view(candidate.data(), std::size_t(candidate.size())) ==
            std::string_view(name.data(), std::size_t(name.size())))
            return static_cast<int>(row);
    }
    return -1;
}

/// Position of a mnemonic, looked up by the compiler: one that the table does not hold does not compile.
consteval int at(Table table, QLatin1StringView name)
{
    const int row = find(table, name);
    if (row < 0)
        throw "no such mnemonic in the catalogue";
    return row;
}

/// As at(), for a setter: a row without one does not compile.
consteval int settableAt(Table table, QLatin1StringView name)
{
    const int row = at(table, name);
    if (!table[std::size_t(row)].flags.testFlag(Settable))
        throw "the mnemonic has no setter";
    return row;
}

/// Whether names are unique, every row that goes to slaves or is always sent can be set, and the base's NAME and SLAVE
/// are there.
consteval bool isWellFormed(Table table)
{
    for (std::size_t row = 0; row < table.size(); ++row) {
        if (find(table, table[row].name) != static_cast<int>(row))
            return false;
        const Flags flags = table[row].flags;
        if ((flags.testFlag(ToSlaves) || flags.testFlag(AlwaysSent)) && !flags.testFlag(Settable))
            return false;
    }
    return find(table, QLatin1StringView("NAME")) >= 0 && find(table, QLatin1StringView("SLAVE")) >= 0;
}

} // namespace Catalogue
