#pragma once

#include <QByteArrayList>
#include <QMap>
#include <QStringList>

/// What was asked for, as sets on the wire ("R1:FREQ:2250.5"), against what the chassis was written.
class Ledger
{
public:
    /// One more such set may be written; once slaving was asked for, to the other channels of the kind as well.
    void ask(const QByteArray &set);
    [[nodiscard]] int asked() const { return m_asked; }
    /// What of @p requests was written more often than it was asked for, a line each.
    [[nodiscard]] QStringList unasked(const QByteArrayList &requests) const;

private:
    void allow(const QByteArray &set) { ++m_allowed[set]; }

    QMap<QByteArray, int> m_allowed;
    int m_asked = 0;
    bool m_isSlaving = false;
};
