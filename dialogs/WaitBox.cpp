#include "dialogs/WaitBox.h"

#include <QMessageBox>
#include <QTimer>

using namespace Qt::StringLiterals;

WaitBox::WaitBox(const QString &text, QWidget *parent) : QObject(parent), m_text(text), m_window(parent) {}

void WaitBox::update(const QString &report)
{
    if (report == "0"_L1)
        open();
    else if (report == "1"_L1)
        end();
}

void WaitBox::open()
{
    if (m_box)
        return;
    Q_EMIT opening();
    auto *const box = new QMessageBox(QMessageBox::Information, {}, m_text, QMessageBox::NoButton, m_window);
    box->setStandardButtons(QMessageBox::NoButton); // Qt would add an OK button of its own
    QTimer::singleShot(kLongestMs, box, [this] { end(); });
    m_box = box;
    box->exec();
    Q_EMIT closed(); // the box itself is gone or going by now
}

void WaitBox::end()
{
    QMessageBox *const box = m_box;
    if (!box)
        return;
    m_box = nullptr;
    box->done(QDialog::Accepted); // a message box without buttons ignores close()
    box->deleteLater();
}
