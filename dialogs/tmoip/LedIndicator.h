#pragma once

#include <QWidget>

class QLabel;

/// A lamp that shows one of four images and knows its colour by name. Each image has its own mark, and the accessible
/// description names the colour, so that no state is shown by colour alone.
class LedIndicator : public QWidget
{
    Q_OBJECT

public:
    /// Shows "Black", "Red", "Green" or "Yellow", as written; any other name counts as "Black".
    void setColor(const QString &name);
    /// The colour shown, initially "Black".
    [[nodiscard]] QString getColor() const { return m_color; }

protected:
    /// @param name   object name
    /// @param images resource path of the images up to the colour
    LedIndicator(const QString &name, const QString &images, QWidget *parent);

    [[nodiscard]] QLabel *label() const { return m_label; }

private:
    QString m_images;
    QString m_color;
    QLabel *m_label;
};
