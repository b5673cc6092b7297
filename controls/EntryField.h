#pragma once

#include "controls/ValueEdit.h"

#include <functional>
#include <optional>

/// A setting that the operator types into a field. The field shows the value in force, except for a text that is
/// half-typed: that one stays until it is entered or given up.
///
/// A value to copy; field and setting outlive it.
class EntryField
{
public:
    EntryField() = default;
    /// @param inForce   the value held, as wire text
    /// @param isPending whether a change of it still waits for its answer
    /// @param toText    how the operator reads a value
    EntryField(ValueEdit *line, std::function<QString()> inForce, std::function<bool()> isPending,
               std::function<QString(const QString &)> toText)
        : m_line(line)
        , m_inForce(std::move(inForce))
        , m_isPending(std::move(isPending))
        , m_toText(std::move(toText))
    {
    }

    /// For a setting of a channel.
    template <typename C, typename Text>
    [[nodiscard]] static EntryField of(ValueEdit *line, const C *channel, QLatin1StringView mnemonic,
                                       QString (C::*get)() const, Text toText)
    {
        return { line, [channel, get] { return (channel->*get)(); },
                 [channel, mnemonic] { return channel->isSetPending(mnemonic); }, toText };
    }

    [[nodiscard]] ValueEdit *line() const { return m_line; }
    [[nodiscard]] QString text() const { return m_line->text(); }
    /// Whether the operator has changed the text.
    [[nodiscard]] bool isTyped() const { return m_line->isModified(); }
    /// Whether the text differs from the value in force, typed or not.
    [[nodiscard]] bool differs() const { return isTyped() || text() != m_toText(m_inForce()); }
    /// Whether there is a value to enter: anything but the mark of an unknown one.
    [[nodiscard]] bool hasValue() const;

    /// Shows a value unless a text is half-typed.
    void show(const QString &value) const { m_line->showText(m_toText(value)); }
    void showInForce() const { show(m_inForce()); }
    /// Shows the value in force instead of a half-typed text.
    void giveUp() const;
    /// The typed text, once for each time it was typed: the box that refuses it ends the editing once more.
    [[nodiscard]] std::optional<QString> take() const;
    /// Ends the entry. The field keeps its text only while a change waits for its answer.
    void end(bool isRefused = false) const;

private:
    ValueEdit *m_line = nullptr;
    std::function<QString()> m_inForce;
    std::function<bool()> m_isPending;
    std::function<QString(const QString &)> m_toText;
};
