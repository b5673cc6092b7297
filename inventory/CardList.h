#pragma once

#include "inventory/Card.h"

#include <QList>
#include <QString>

/// Parses the chassis' card list, in which every micro has an entry of its own.
namespace CardList {

/// One card an entry, in the order of the list; entries of an unknown layout are left out.
/// @param text entries separated by ","
[[nodiscard]] QList<Card> parse(const QString &text);

/// Merges the entries of one card, micros in order of arrival. An entry that names only a model joins the first card
/// of that model, or stands alone if there is none.
[[nodiscard]] QList<Card> consolidated(const QList<Card> &entries);

} // namespace CardList
