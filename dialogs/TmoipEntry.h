#pragma once

#include <QString>

#include <optional>

class QWidget;
class ValueEdit;

/// What the TMoIP windows share about fields and what is typed into them.
namespace TmoipEntry {

/// Whether a text is not empty and made only of the digits 0 to 9.
[[nodiscard]] bool isNumber(const QString &text);

/// Whether a text is a dotted IPv4 address: four numbers from 0 to 255.
[[nodiscard]] bool validateIP(const QString &text);

/// Says in a box what is wrong with an entry. It bars the window of @p widget, not the program.
void refuse(const QWidget *widget, const QString &text);

/// The address that the operator has typed, once an entry. A text that is none is refused with @p complaint, and the
/// field shows @p held again.
[[nodiscard]] std::optional<QString> take(ValueEdit *line, const QString &held, const QString &complaint);

/// Shows a value in full, unless the operator is typing; "--" for one that the card has not reported yet.
void show(ValueEdit *line, const QString &value);

} // namespace TmoipEntry
