#pragma once

#include "controls/EntryField.h"

#include <QString>

#include <optional>

class QWidget;

/// What the TMoIP windows share about fields and the texts that the operator types into them.
namespace TmoipEntry {

/// Whether a text is not empty and made only of the digits 0 to 9.
[[nodiscard]] bool isNumber(const QString &text);

/// Whether a text is a dotted IPv4 address: four numbers from 0 to 255.
[[nodiscard]] bool validateIP(const QString &text);

/// Names the error of an entry in a box. It blocks the window of @p widget, not the program.
void refuse(const QWidget *widget, const QString &text);

/// The typed address, at most once per edit. Any other text is refused with @p complaint, and the field shows the
/// address in force.
[[nodiscard]] std::optional<QString> take(const EntryField &field, const QString &complaint);

/// The whole of a value, whatever its length; "--" for an unknown one.
[[nodiscard]] QString whole(const QString &value);

} // namespace TmoipEntry
