#pragma once

#include "simulator/links/PacedWriter.h"
#include "simulator/links/Pty.h"

#include <QObject>
#include <QSocketNotifier>
#include <QStringList>

#include <memory>

namespace sim {

/// One serial link of the chassis: a pseudo-terminal, the names under which a client finds it, and output at line
/// speed. Bytes sent while no client has the line open are lost, as on a real line.
class Link : public QObject
{
    Q_OBJECT

public:
    /// `role` is the name on the console; `paths` are the links made to the client's end.
    Link(const QString &role, const QStringList &paths, QObject *parent = nullptr);
    ~Link() override;
    Q_DISABLE_COPY_MOVE(Link)

    [[nodiscard]] const QString &role() const { return m_role; }

    /// Creates a new terminal and its names. On failure nothing is left behind and `error` says why.
    [[nodiscard]] bool plug(QString &error);
    /// Hangs up and removes the names.
    void unplug();
    [[nodiscard]] bool isPlugged() const { return m_pty.isOpen(); }
    [[nodiscard]] bool hasClient() const { return m_hasClient; }

    /// Queues bytes; false if they were lost.
    bool send(const QByteArray &bytes);
    /// Bytes in the transmit buffer.
    [[nodiscard]] qsizetype pending() const { return m_writer.pending(); }
    /// Discards the transmit buffer.
    void silence() { m_writer.clear(); }
    /// Detects that the client has left; to be called regularly, because not every close causes an event.
    void noticeLeaving();
    /// Detects a new client; to be called regularly, after noticeLeaving(), because there is no event for it.
    void noticeComing();
    /// Stops or resumes reading from the client. While stopped, its terminal fills up and then blocks its writes.
    void holdBack(bool hold);
    /// Reads at once what the client has written, even while reading is stopped.
    void takeWaiting();
    /// Number of messages lost to a full transmit buffer.
    [[nodiscard]] qint64 overruns() const { return m_overruns; }

Q_SIGNALS:
    void received(const QByteArray &bytes);
    /// The terminal or its client has changed: an incomplete frame will never be completed.
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
    bool m_isLocked = false; // by a client that was killed while it had exclusive access
    qint64 m_overruns = 0;
};

} // namespace sim
