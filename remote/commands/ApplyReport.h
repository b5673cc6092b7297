#pragma once

#include <QByteArray>
#include <QList>

namespace remote {

/// The result of restoring settings.
struct ApplyReport
{
    struct Refusal
    {
        QByteArray key;
        QByteArray wanted;
        QByteArray value; ///< still in force; empty if the head knows none
    };

    qsizetype same = 0;
    qsizetype changed = 0;
    QList<Refusal> refused;
    QByteArrayList skipped;

    [[nodiscard]] bool isComplete() const { return refused.isEmpty() && skipped.isEmpty(); }
    [[nodiscard]] QByteArray text() const;
    [[nodiscard]] QByteArray json() const;
};

} // namespace remote
