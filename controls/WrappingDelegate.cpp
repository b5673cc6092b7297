#include "controls/WrappingDelegate.h"

#include <QApplication>
#include <QListView>
#include <QPainter>

namespace {

constexpr int kMargin = 8;
constexpr int kFlags = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWrapAnywhere;

} // namespace

WrappingDelegate::WrappingDelegate(QListView *list) : QStyledItemDelegate(list), m_list(list) {}

void WrappingDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QString text = std::exchange(item.text, {});
    m_list->style()->drawControl(QStyle::CE_ItemViewItem, &item, painter, m_list);
    painter->save();
    painter->setFont(item.font);
    painter->setPen(m_list->palette().color(QPalette::Text));
    painter->drawText(option.rect.adjusted(kMargin, 0, -kMargin, 0), kFlags, text);
    painter->restore();
}

QSize WrappingDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const int width = m_list->viewport()->width();
    const QRect room(0, 0, width - 2 * kMargin, 0);
    const QRect text = QFontMetrics(item.font).boundingRect(room, kFlags, item.text);
    return { width, text.height() + kMargin };
}
