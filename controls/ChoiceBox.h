#pragma once

#include <QComboBox>

#include <optional>

/// A list that shows the value in force. A value that no item stands for leaves nothing selected, and stands in the box
/// itself; one that was never read leaves the box empty. Whichever item is chosen then is a change.
///
/// What the program shows is not signalled: currentIndexChanged() tells of the operator's choices alone.
class ChoiceBox : public QComboBox
{
    Q_OBJECT
    Q_PROPERTY(QString shownText READ shownText)

public:
    explicit ChoiceBox(QWidget *parent = nullptr);

    /// Selects the item at the position that @p value holds.
    void showPosition(const QString &value);
    /// Selects the item at @p position.
    /// @param value what stands in the box if there is no such item; an unknown one leaves it empty
    void showItem(qint64 position, const QString &value);
    /// Shows @p value in place of the item selected, which stays so but counts no more as chosen.
    void showInstead(const QString &value);

    /// Exchanges the items; refilled() follows. While the list is open it stays as it is: what the operator chooses
    /// from it is looked up in the new one.
    void refill(const QStringList &items);

    /// The item or the value that the operator sees; empty for an unknown value.
    [[nodiscard]] QString shownText() const;

    void showPopup() override;
    void hidePopup() override;
    /// Notices a list that another window closes.
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The items have been exchanged; the position selected is the one of before if there still is one.
    void refilled();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void setStandIn(const QString &value);
    void exchange(const QStringList &items);

    QString m_standIn; ///< shown in place of an item
    std::optional<QStringList> m_waiting;
};
