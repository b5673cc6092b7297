#pragma once

#include <QLabel>

/// Marks a panel or a window as stale and names the reason. It covers part of its parent, so that no control moves.
class StaleMark : public QLabel
{
    Q_OBJECT

public:
    explicit StaleMark(QWidget *parent);

    /// @param reason why the chassis reports no new values; empty removes the mark
    void setReason(const QString &reason);
};
