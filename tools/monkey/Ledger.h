#pragma once

#include <QByteArrayList>
#include <QMap>
#include <QStringList>

/// Compares the requested sets ("R1:FREQ:2250.5") with the sets on the wire.
class Ledger
{
public:
    /// One more such set is allowed; once slaving was requested, to the other channels of the kind as well.
    void ask(const QByteArray &set);
    [[nodiscard]] int asked() const { return m_asked; }
    /// Those of @p requests that were written more often than requested, a line each.
    [[nodiscard]] QStringList unasked(const QByteArrayList &requests) const;

private:
    void allow(const QByteArray &set) { ++m_allowed[set]; }

    QMap<QByteArray, int> m_allowed;
    int m_asked = 0;
    bool m_isSlaving = false;
};
