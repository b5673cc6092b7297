#pragma once

#include <QString>

#include <optional>

/// Compares later card lists with the one that the channels were made for. A changed list is accepted once it was
/// received twice running, for a single one may be damaged.
class CardListWatch
{
public:
    /// The list that the channels were made for.
    void setKnown(const QString &cardList) { m_known = cardList; }
    /// The chassis was found again: what it said before counts no longer.
    void restart() { m_changed.reset(); }
    /// Notes a later list.
    /// @return whether it is accepted
    bool note(const QString &cardList);
    /// Whether the accepted list differs from the known one.
    [[nodiscard]] bool hasChanged() const { return m_hasChanged; }

private:
    QString m_known;
    std::optional<QString> m_changed; ///< the last list, if it differs
    bool m_hasChanged = false;
};
