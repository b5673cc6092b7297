#include "dialogs/system/CardConfigWindow.h"

#include "controls/QListWidgetPresets.h"
#include "controls/WrappingDelegate.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

CardConfigWindow::CardConfigWindow(const QStringList &cards, QWidget *parent, bool *open)
    : QDialog(parent)
    , m_open(open)
{
    if (objectName().isEmpty())
        setObjectName(u"CardConfigWindow"_s);
    setWindowTitle(u"System Cards Configuration"_s);
    setWindowFlags((windowFlags() | Qt::Dialog) & ~Qt::WindowContextHelpButtonHint);
    setAttribute(Qt::WA_DeleteOnClose);

    auto *const list = new QListWidgetPresets(this);
    list->setObjectName(u"listWidgetCardInfo"_s);
    list->setAccessibleName(u"Cards"_s);
    list->setFrameShape(QFrame::NoFrame); // it fills the window, which has the same colour
    list->setItemDelegate(new WrappingDelegate(list));
    list->setResizeMode(QListView::Adjust);
    list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list->addItems(cards);

    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 10, 0, 0);
    layout->addWidget(list);
    resize(275, 320);
}

CardConfigWindow::~CardConfigWindow() { *m_open = false; }
