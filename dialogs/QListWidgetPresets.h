#pragma once

#include <QListWidget>

/// List that tells of the keys a list of presets acts on. The keys work as in any list besides.
class QListWidgetPresets : public QListWidget
{
    Q_OBJECT

public:
    explicit QListWidgetPresets(QWidget *parent = nullptr);

Q_SIGNALS:
    void DeletePressed();
    /// The Enter key of the keypad; the main Return key tells nothing.
    void EnterPressed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
