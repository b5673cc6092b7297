#pragma once

#include <QLabel>

/// Says over a panel or a window that what it shows is old, and why. It lies over its parent, so that nothing moves
/// under the operator's hand.
class StaleMark : public QLabel
{
    Q_OBJECT

public:
    explicit StaleMark(QWidget *parent);

    /// @param reason why the chassis tells no new values; empty takes the mark off
    void setReason(const QString &reason);
};
