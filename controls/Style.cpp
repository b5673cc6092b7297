#include "controls/Style.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QLocale>

using namespace Qt::StringLiterals;

/// A static library's resources do not register themselves; the macro works only outside namespaces.
static void registerResources() { Q_INIT_RESOURCE(resources); }

void Style::apply(QApplication &application)
{
    registerResources();
    QLocale::setDefault(QLocale::c()); // the wire and the panels write a decimal point in every country
    QApplication::setStyle(u"Fusion"_s);
    QFile sheet(u":/style.qss"_s);
    if (sheet.open(QIODevice::ReadOnly))
        application.setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

void Style::forgetWithWindow(const QWidget *window)
{
    for (const QComboBox *box : window->findChildren<QComboBox *>())
        box->view()->parentWidget()->setStyleSheet(u"/* looks as before */"_s);
    for (const QAbstractSpinBox *box : window->findChildren<QAbstractSpinBox *>()) {
        for (QLineEdit *entry : box->findChildren<QLineEdit *>())
            entry->setStyleSheet(u"QLineEdit, QLineEdit:focus { border: none; padding: 0; background: transparent;"
                                 " min-width: 0; min-height: 0; }"_s);
    }
}
