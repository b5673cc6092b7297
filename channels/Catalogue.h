#pragma once

#include <QFlags>
#include <QLatin1StringView>

#include <array>
#include <span>

/// What a channel class knows, as data: one row a mnemonic, in the order of the start-up queries.
namespace Catalogue {

enum class Kind {
    Setting, ///< stored when it differs and reported by SettingChanged, refused or not
    Silent,  ///< stored when it differs, never signalled: it is read on demand
    Status,  ///< every report is stored, none is signalled: the panels read it on their timer
    Event,   ///< reported by SettingChanged, not stored
    Relayed, ///< neither stored nor reported: it is for the remote client alone
    Special, ///< processed by the class itself
};

enum Flag {
    NoFlags = 0x0,
    Queried = 0x1,        ///< queried at start-up
    Settable = 0x2,       ///< has a setter
    ToSlaves = 0x4,       ///< its setter copies the command to slaved channels
    NoPrevious = 0x8,     ///< the value before the last change is not kept
    AlwaysSent = 0x10,    ///< its setter also sends the current value
    OnlyDifferent = 0x20, ///< of a status value: a report of the current value does not change the previous one
    // Towards the remote client
    Served = 0x40,     ///< the client may ask for it, and set it if it has a setter
    ToRemote = 0x80,   ///< reports are mirrored on the remote link
    ToStatus = 0x100,  ///< reports are mirrored on the remote eye-and-status link
    InPercent = 0x200, ///< a fraction here, in percent there
    PassedOn = 0x400,  ///< the client's sets go to the card as they are
    Series = 0x800,    ///< each report counts: a newer one does not replace it
    Order = 0x1000,    ///< setting it triggers an action: there is no value to read back
};
Q_DECLARE_FLAGS(Flags, Flag)
Q_DECLARE_OPERATORS_FOR_FLAGS(Flags)

struct Row
{
    // Constructors, because Clang 14 takes no table of rows with default member initializers for a constant.
    constexpr Row(QLatin1StringView rowName, Kind rowKind, Flags rowFlags,
                  QLatin1StringView value = QLatin1StringView("Unknown"))
        : Row(rowName, rowKind, rowFlags, value, value)
    {
    }
    constexpr Row(QLatin1StringView rowName, Kind rowKind, Flags rowFlags, QLatin1StringView value,
                  QLatin1StringView previous)
        : name(rowName)
        , kind(rowKind)
        , flags(rowFlags)
        , initial(value)
        , initialPrevious(previous)
    {
    }

    QLatin1StringView name;
    Kind kind;
    Flags flags;
    QLatin1StringView initial;
    QLatin1StringView initialPrevious;
};

/// Served to the client, and mirrored on the remote link.
inline constexpr Flags kShown = Served | ToRemote;
/// Served to the client, and mirrored on the eye-and-status link.
inline constexpr Flags kReading = Served | ToStatus;

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

/// Whether names are unique, every row that goes to slaves or is always sent can be set, none is mirrored on both links
/// to the client and SLAVE on neither, and the base's NAME and SLAVE are there.
consteval bool isWellFormed(Table table)
{
    for (std::size_t row = 0; row < table.size(); ++row) {
        if (find(table, table[row].name) != static_cast<int>(row))
            return false;
        const Flags flags = table[row].flags;
        if ((flags.testFlag(ToSlaves) || flags.testFlag(AlwaysSent)) && !flags.testFlag(Settable))
            return false;
        if (flags.testFlag(ToRemote) && flags.testFlag(ToStatus))
            return false;
    }
    const int slave = find(table, QLatin1StringView("SLAVE"));
    if (slave < 0 || (table[std::size_t(slave)].flags & (ToRemote | ToStatus)))
        return false;
    return find(table, QLatin1StringView("NAME")) >= 0;
}

} // namespace Catalogue
