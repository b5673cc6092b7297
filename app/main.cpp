#include "app/HealthLog.h"
#include "common/EndSignals.h"
#include "controls/Style.h"
#include "frontpanel/ZIRVOFSMainWindow.h"
#include "head/HeadLinks.h"

#include <QApplication>
#include <QMessageBox>

#include <csignal>

#include <malloc.h>

using namespace Qt::StringLiterals;

namespace {

void setIdentity()
{
    QCoreApplication::setApplicationVersion(u"2.1.0.9"_s);
    QCoreApplication::setOrganizationName(u"HURLO"_s);
    QCoreApplication::setOrganizationDomain(QString());
    QCoreApplication::setApplicationName(u"HURLO ZIRVO Remote Software"_s);
}

/// Makes freed large blocks go back to the system, however long the program runs: the C library would otherwise raise
/// its threshold to the size of the first window that was closed.
void keepHeapSmall()
{
    constexpr int kLargeBytes = 128 * 1024;
    ::mallopt(M_MMAP_THRESHOLD, kLargeBytes);
    ::mallopt(M_TRIM_THRESHOLD, kLargeBytes);
}

int refuseWithoutIdentifier()
{
    QMessageBox box(QMessageBox::Warning, u"Software Info"_s,
                    u"Name: HURLO ZIRVO Remote Software\rVersion: "_s + QCoreApplication::applicationVersion() +
                        u"\r\rA SystemIdentifier cmd line argument must be provided when launching this software"_s,
                    QMessageBox::Ok);
    box.exec();
    return 1;
}

int run(ZIRVOFSMainWindow &window, const QString &systemIdentifier)
{
    const EndSignals endSignals({ SIGTERM, SIGINT, SIGHUP }, { SIGPIPE }); // nobody may be reading the log
    const HealthLog healthLog(window);
    QObject::connect(&endSignals, &EndSignals::arrived, &window, &QWidget::close);
    window.setSystemIdentifier(systemIdentifier);
    window.show();
    window.activateWindow(); // a head without a window manager gives nobody the keyboard focus
    window.StartComms();
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    keepHeapSmall();
    QApplication application(argc, argv);
    Style::apply(application);
    HeadLinks links; // the window writes its last request to the command link, so the links outlive it
    ZIRVOFSMainWindow window;
    window.setLinks(&links);
    setIdentity();

    const QStringList arguments = QCoreApplication::arguments();
    return arguments.size() < 2 ? refuseWithoutIdentifier() : run(window, arguments[1]);
}
