#pragma once

class QApplication;
class QWidget;

/// Look of the whole application.
namespace Style {

/// Sets widget style, style sheet and locale; called before the first window is created.
void apply(QApplication &application);

/// Makes the style drop what it caches for @p window when the window is deleted. Without a style sheet of their own,
/// the inner parts of combo boxes and spin boxes would stay in its cache.
void forgetWithWindow(const QWidget *window);

} // namespace Style
