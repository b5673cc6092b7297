#pragma once

#include "channels/DmdChan.h"

/// One setting of a demodulator that the operator chooses from a list, and how the positions in the list stand for
/// values.
struct DmdChoice
{
    enum class Form {
        Position,
        PositionLessOne, ///< "-1" for the first item
        VideoSource,     ///< "4" and "5" are no sources; "6" and "7" come next
    };

    QLatin1StringView mnemonic;
    QString (DmdChan::*get)() const;
    void (DmdChan::*set)(const QString &);
    Form form = Form::Position;
    void (DmdChan::*setToo)(const QString &) = nullptr; ///< of a second setting that takes the same value

    /// Sends the value of the item at @p index.
    void choose(DmdChan &channel, int index) const;
    /// The position of the item for a value; -1 for a text that is no position.
    [[nodiscard]] qint64 positionOf(const QString &value) const;

    /// The choice with this mnemonic, which must exist.
    [[nodiscard]] static const DmdChoice &of(QLatin1StringView mnemonic);
};
