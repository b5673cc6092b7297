#pragma once

#include <QObject>

/// Protects controls from an accidental turn of the wheel: combo boxes, spin boxes and sliders ignore it unless they
/// have the focus.
class WheelGuard : public QObject
{
    Q_OBJECT

public:
    /// Guards every such control under @p root, which owns the guard.
    static void protect(QWidget *root);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using QObject::QObject;
};
