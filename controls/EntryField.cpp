#include "controls/EntryField.h"

#include "controls/ValueText.h"

bool EntryField::hasValue() const { return isTyped() || text() != ValueText::kUnknown; }

void EntryField::giveUp() const
{
    if (!isTyped())
        return;
    m_line->setModified(false);
    showInForce();
}

std::optional<QString> EntryField::take() const
{
    if (!isTyped())
        return std::nullopt;
    m_line->setModified(false);
    return text();
}

void EntryField::end(bool isRefused) const
{
    m_line->setModified(false);
    if (isRefused || !m_isPending())
        showInForce();
}
