#pragma once

#include "simulator/chassis/FaultRules.h"

#include <QByteArrayList>

#include <optional>

namespace sim {

/// A console line, split into words, with the readers of its arguments.
class Order
{
public:
    explicit Order(const QByteArray &line) : m_line(line.trimmed()), m_words(line.simplified().split(' ')) {}

    /// How many words follow the name.
    [[nodiscard]] qsizetype argumentCount() const { return m_words.size() - 1; }
    /// Word 0 is the name of the command. Empty beyond the last word.
    [[nodiscard]] QByteArray word(qsizetype index) const { return m_words.value(index); }
    /// The text after the first `from` words, as typed.
    [[nodiscard]] QByteArray tail(qsizetype from) const;

    /// Reads seconds, at most an hour; false if the word is anything else.
    [[nodiscard]] bool readSeconds(qsizetype index, double &seconds) const;
    /// "900", or "0-3000" for any time between.
    [[nodiscard]] std::optional<FaultRules::Range> range(qsizetype index) const;

    /// Which requests a fault applies to, and how many of them; both optional.
    struct Victims
    {
        QByteArray target;       ///< "R1:FREQ", "R1", or empty for every request
        QByteArray share;        ///< as typed
        FaultRules::Share count; ///< what it means
    };
    /// Reads the victims from word `index` on; nothing if the share is malformed.
    [[nodiscard]] std::optional<Victims> victims(qsizetype index) const;

private:
    QByteArray m_line;
    QByteArrayList m_words;
};

} // namespace sim
