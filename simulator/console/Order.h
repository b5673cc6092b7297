#pragma once

#include "simulator/chassis/FaultRules.h"

#include <QByteArrayList>

#include <optional>

namespace sim {

/// A console line: as words, as text from some word on, and what single words mean.
class Order
{
public:
    explicit Order(const QByteArray &line) : m_line(line.trimmed()), m_words(line.simplified().split(' ')) {}

    /// How many words follow the name.
    [[nodiscard]] qsizetype argumentCount() const { return m_words.size() - 1; }
    /// Word 0 is the name of the order. Empty beyond the last one.
    [[nodiscard]] QByteArray word(qsizetype index) const { return m_words.value(index); }
    /// The text behind the first `from` words, as it was typed.
    [[nodiscard]] QByteArray tail(qsizetype from) const;

    /// Seconds up to an hour; false if the word is none.
    [[nodiscard]] bool readSeconds(qsizetype index, double &seconds) const;
    /// "900", or "0-3000" for any time between.
    [[nodiscard]] std::optional<FaultRules::Range> range(qsizetype index) const;

    /// Which requests a fault is for, and how many of them, both optional.
    struct Victims
    {
        QByteArray target;       ///< "R1:FREQ", "R1", or empty for every request
        QByteArray share;        ///< as typed
        FaultRules::Share count; ///< what it means
    };
    /// The victims named from word `index` on; nothing if the share is none.
    [[nodiscard]] std::optional<Victims> victims(qsizetype index) const;

private:
    QByteArray m_line;
    QByteArrayList m_words;
};

} // namespace sim
