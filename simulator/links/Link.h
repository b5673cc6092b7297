#pragma once

#include "simulator/links/PacedWriter.h"
#include "simulator/links/Pty.h"

#include <QObject>
#include <QSocketNotifier>
#include <QStringList>

#include <memory>

namespace sim {

/// One serial link of the chassis: a pseudo-terminal, the names under which a client finds it, and output at line
/// speed. What is sent while no client holds the line open is lost, as on a real line.
class Link : public QObject
{
    Q_OBJECT

public:
    /// `role` is the name on the console; `paths` are the links made to the client's end.
    Link(const QString &role, const QStringList &paths, QObject *parent = nullptr);
    ~Link() override;
    Q_DISABLE_COPY_MOVE(Link)

    [[nodiscard]] const QString &role() const { return m_role; }

    /// Makes a fresh terminal and its names. On failure nothing is left behind and `error` says why.
    [[nodiscard]] bool plug(QString &error);
    /// Hangs up and removes the names.
    void unplug();
    [[nodiscard]] bool isPlugged() const { return m_pty.isOpen(); }
    [[nodiscard]] bool hasClient() const { return m_hasClient; }

    /// Queues bytes; false if they were lost.
    bool send(const QByteArray &bytes);
    /// Bytes that still wait to be clocked out.
    [[nodiscard]] qsizetype pending() const { return m_writer.pending(); }
    /// Drops what is queued.
    void silence() { m_writer.clear(); }
    /// Looks whether the client is gone; to be called regularly. Not every one leaves an event behind.
    void noticeLeaving();
    /// Looks whether a client came; to be called regularly, after noticeLeaving(). There is no event for that.
    void noticeComing();
    /// Lets what the client writes wait in its terminal, until that is full and the client has to wait as well.
    void holdBack(bool hold);
    /// Takes at once what the client has written, even while it is held back.
    void takeWaiting();
    /// How many messages the full transmit buffer has swallowed.
    [[nodiscard]] qint64 overruns() const { return m_overruns; }

Q_SIGNALS:
    void received(const QByteArray &bytes);
    /// The line is new or has a new client: a frame begun before will never be finished.
    void interrupted();

private:
    [[nodiscard]] bool makeNames(QString &error);
    void removeNames();
    void readPort();
    void clientLeft();

    QString m_role;
    QStringList m_paths;
    Pty m_pty;
    PacedWriter m_writer;
    std::unique_ptr<QSocketNotifier> m_notifier;
    bool m_hasClient = false;
    bool m_isHeldBack = false;
    bool m_isLocked = false; // by a client that was killed while it held the terminal for itself
    qint64 m_overruns = 0;
};

} // namespace sim
