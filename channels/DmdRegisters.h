#pragma once

#include "channels/DmdCatalogue.h"

#include <QLatin1StringView>
#include <QString>
#include <QStringView>

#include <array>

/// The nine registers of a demodulator card that hold settings: which setting each holds, in which form, and the text
/// read last.
///
/// A register is read with "RDRG" and written with "CDRG". The older cards take three of the settings as commands of
/// their own instead.
class DmdRegisters
{
public:
    static constexpr qsizetype kNumberSize = 2; ///< digits of a register's number

    struct Register;

    /// @param hasDirectCommands whether the card takes "DQMON", "DQMFS" and "DEQE" instead of registers
    explicit DmdRegisters(bool hasDirectCommands);

    [[nodiscard]] bool hasDirectCommands() const { return m_hasDirectCommands; }

    /// The register behind a catalogue row, the one of a number, and the one that a direct command stands for; null if
    /// there is none.
    [[nodiscard]] static const Register *ofRow(int row);
    [[nodiscard]] static const Register *numbered(QStringView number);
    [[nodiscard]] static const Register *ofDirectCommand(const QString &mnemonic);

    /// Whether the setting is set by a command of its own.
    [[nodiscard]] bool isDirect(const Register &reg) const;
    /// Whether replies about the register carry its setting. Those of a setting that an older card has a query of its
    /// own for do not, the equalizer aside.
    [[nodiscard]] bool isRead(const Register &reg) const;
    /// Whether writing the setting writes nothing else.
    [[nodiscard]] bool isWrittenWhole(const Register &reg) const;

    /// The text read last: four hexadecimal digits; "Unknown" until read.
    [[nodiscard]] const QString &text(const Register &reg) const;
    /// Takes a text that was read.
    /// @param text digits behind the register's number
    void take(const Register &reg, QStringView text);
    /// The setting that the text read last holds.
    [[nodiscard]] QString setting(const Register &reg) const;
    /// Register text that holds @p setting and leaves the register's other bits alone.
    [[nodiscard]] QString textFor(const Register &reg, const QString &setting) const;

private:
    static constexpr std::size_t kCount = 9;

    const bool m_hasDirectCommands;
    std::array<QString, kCount> m_texts;
};

struct DmdRegisters::Register
{
    /// How the register holds its setting.
    enum class Form {
        DqmBits, ///< "1" while both enabling bits are set
        Enable,  ///< "1" while the register is not zero
        Digits,  ///< the register's text itself
        Decimal, ///< the register as a decimal number
    };

    QLatin1StringView number; ///< two hexadecimal digits
    int row;
    Form form;
    QLatin1StringView directCommand; ///< command and query of the older cards; empty where they use the register
};
