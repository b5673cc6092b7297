#pragma once

class QApplication;

/// Look of the whole application.
namespace Style {

/// Sets widget style, style sheet and locale; before the first window is made.
void apply(QApplication &application);

} // namespace Style
