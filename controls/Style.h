#pragma once

class QApplication;
class QWidget;

/// Look of the whole application.
namespace Style {

/// Sets widget style, style sheet and locale; before the first window is made.
void apply(QApplication &application);

/// Lets the style forget all about @p window, which will be deleted, when that happens. It counts the inner parts of
/// combo boxes and spin boxes as no widgets of their own, unless they have a style sheet, and keeps what it knows of
/// them.
void forgetWithWindow(const QWidget *window);

} // namespace Style
