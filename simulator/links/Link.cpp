#include "simulator/links/Link.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>

namespace sim {

namespace {
/// More reads than a full terminal needs; the limit keeps a client that never stops writing from blocking the chassis.
constexpr int kMostReads = 16;
} // namespace

Link::Link(const QString &role, const QStringList &paths, QObject *parent)
    : QObject(parent)
    , m_role(role)
    , m_paths(paths)
    , m_writer([this](QByteArrayView bytes) { return m_pty.write(bytes); })
{
}

Link::~Link() { unplug(); }

bool Link::plug(QString &error)
{
    unplug();
    if (!m_pty.open()) {
        error = QStringLiteral("no pseudo-terminal: %1").arg(qt_error_string(errno));
        return false;
    }
    if (!makeNames(error)) {
        unplug();
        return false;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_pty.descriptor(), QSocketNotifier::Read);
    m_notifier->setEnabled(false);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &Link::readPort);
    return true;
}

void Link::unplug()
{
    m_notifier.reset();
    m_hasClient = false;
    m_isLocked = false;
    m_writer.clear();
    removeNames();
    m_pty.close();
    Q_EMIT interrupted();
}

bool Link::send(const QByteArray &bytes)
{
    if (!m_hasClient)
        return false;
    const bool queued = m_writer.write(bytes);
    m_overruns += queued ? 0 : 1;
    return queued;
}

void Link::noticeLeaving()
{
    if (m_pty.hasClient())
        return;
    // Left by a client that closed while it was blocked, or that came and went between two steps.
    takeWaiting();
    if (m_hasClient)
        clientLeft();
}

void Link::noticeComing()
{
    QString error;
    if (m_isLocked && !plug(error))
        qWarning("%s: %s", qPrintable(m_role), qPrintable(error));
    if (m_hasClient || !m_pty.hasClient())
        return;
    m_hasClient = true;
    m_notifier->setEnabled(!m_isHeldBack);
    Q_EMIT interrupted();
}

void Link::holdBack(bool hold)
{
    m_isHeldBack = hold;
    if (m_hasClient)
        m_notifier->setEnabled(!hold);
}

void Link::takeWaiting()
{
    QByteArray bytes;
    for (int reads = 0; reads < kMostReads && !(bytes = m_pty.read()).isEmpty(); ++reads)
        Q_EMIT received(bytes);
}

bool Link::makeNames(QString &error)
{
    for (const QString &path : m_paths) {
        // A symbolic link left by a killed simulator is replaced; anything else is not ours.
        if (QFileInfo(path).isSymLink())
            QFile::remove(path);
        if (!QFile::link(m_pty.clientPath(), path)) {
            error = QStringLiteral("cannot make %1: %2").arg(path, qt_error_string(errno));
            return false;
        }
    }
    return true;
}

void Link::removeNames()
{
    for (const QString &path : m_paths) {
        if (isPlugged() && QFile::symLinkTarget(path) == m_pty.clientPath())
            QFile::remove(path);
    }
}

void Link::readPort()
{
    const QByteArray bytes = m_pty.read();
    if (!bytes.isEmpty())
        Q_EMIT received(bytes);
    else if (!m_pty.hasClient())
        clientLeft();
}

/// Without a client the terminal is always readable, so the notifier stays off until one opens it.
void Link::clientLeft()
{
    m_hasClient = false;
    m_notifier->setEnabled(false);
    m_writer.clear();
    m_isLocked = !m_pty.discardUnread();
    Q_EMIT interrupted();
}

} // namespace sim
