#include "dialogs/WaitBox.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>

using namespace Qt::StringLiterals;

WaitBox::WaitBox(const QString &text, QWidget *parent)
    : QObject(parent)
    , m_box(new QMessageBox(QMessageBox::Information, {}, text, QMessageBox::NoButton, parent))
{
    m_box->setStandardButtons(QMessageBox::NoButton); // Qt would add an OK button of its own
    m_limit.setSingleShot(true);
    m_limit.setInterval(kLongestMs);
    connect(&m_limit, &QTimer::timeout, this, &WaitBox::end);
}

void WaitBox::update(const QString &report)
{
    if (report == "0"_L1)
        open();
    else if (report == "1"_L1)
        end();
}

void WaitBox::open()
{
    m_limit.start(); // a repeated report shows that the chassis is not silent
    if (m_shown)
        return;
    m_shown = true;
    // A box that is hidden and shown again at once would appear in the corner of the screen.
    m_box->adjustSize();
    m_box->move(m_box->parentWidget()->geometry().center() - m_box->rect().center());
    if (m_running)
        m_box->show(); // opened again before the former event loop has ended
    else
        run();
}

void WaitBox::run()
{
    const QPointer<QWidget> active = QApplication::activeWindow();
    Q_EMIT opening();
    m_running = true;
    // When the program ends, the loop ends without end(), and must not start again.
    while (m_box->exec() == QDialog::Accepted && m_shown) {
    }
    m_running = false;
    if (active && active->isVisible()) // without a window manager nothing else does
        active->activateWindow();
    Q_EMIT closed();
}

void WaitBox::end()
{
    if (!m_shown)
        return;
    m_shown = false;
    m_limit.stop();
    m_box->done(QDialog::Accepted); // a message box without buttons ignores close()
}
