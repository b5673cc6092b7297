#pragma once

#include <QStyledItemDelegate>

class QListView;

/// Wraps the texts of a list anywhere: the text of a card has hardly any blanks.
class WrappingDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// @param list the list that the delegate is for; becomes its owner
    explicit WrappingDelegate(QListView *list);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    QListView *m_list;
};
