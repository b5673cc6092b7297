#include "controls/QListWidgetPresets.h"

#include <QKeyEvent>

QListWidgetPresets::QListWidgetPresets(QWidget *parent) : QListWidget(parent) {}

void QListWidgetPresets::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Delete)
        Q_EMIT DeletePressed();
    else if (event->key() == Qt::Key_Enter)
        Q_EMIT EnterPressed();
    QListWidget::keyPressEvent(event);
}
