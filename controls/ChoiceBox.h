#pragma once

#include <QComboBox>

#include <optional>

/// A list that shows the value in force. A value without an item selects nothing and is shown as text; a value that was
/// never read leaves the box empty. In both cases any item that the operator chooses is a change.
///
/// currentIndexChanged() reports the operator's choices only, not what the program shows.
class ChoiceBox : public QComboBox
{
    Q_OBJECT
    Q_PROPERTY(QString shownText READ shownText)

public:
    explicit ChoiceBox(QWidget *parent = nullptr);

    /// Selects the item at the position that @p value holds.
    void showPosition(const QString &value);
    /// Selects the item at @p position.
    /// @param value shown as text if there is no such item; an unknown one leaves the box empty
    void showItem(qint64 position, const QString &value);
    /// Shows @p value as text over the selected item. The item stays selected, but choosing it is a change again.
    void showInstead(const QString &value);

    /// Exchanges the items; refilled() follows. An open list stays as it is, and the item chosen from it is looked up
    /// by its text in the new list.
    void refill(const QStringList &items);

    /// The item or the value that the operator sees; empty for an unknown value.
    [[nodiscard]] QString shownText() const;

    void showPopup() override;
    void hidePopup() override;
    /// Detects that another window has closed the list.
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The items have been exchanged. The selected position is the same as before, if it still exists.
    void refilled();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void setStandIn(const QString &value);
    void exchange(const QStringList &items);

    QString m_standIn; ///< shown in place of an item
    std::optional<QStringList> m_waiting;
};
