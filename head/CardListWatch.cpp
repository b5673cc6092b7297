#include "head/CardListWatch.h"

bool CardListWatch::note(const QString &cardList)
{
    const bool isChanged = cardList != m_known;
    const bool isAccepted = !isChanged || cardList == m_changed;
    m_hasChanged = isChanged && (isAccepted || m_hasChanged);
    m_changed = isChanged ? std::optional(cardList) : std::nullopt;
    return isAccepted;
}
