#include "controls/Style.h"

#include <QApplication>
#include <QFile>
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
