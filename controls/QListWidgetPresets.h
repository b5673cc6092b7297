#pragma once

#include <QListWidget>

/// A list that reports the keys on which the dialogs for presets act, besides handling them as any list does.
class QListWidgetPresets : public QListWidget
{
    Q_OBJECT

public:
    explicit QListWidgetPresets(QWidget *parent = nullptr);

Q_SIGNALS:
    void DeletePressed();
    /// The Enter key of the keypad; the main Return key is not reported.
    void EnterPressed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
