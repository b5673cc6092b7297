#pragma once

#include <QByteArray>
#include <QString>

namespace sim {

/// The chassis' end of one pseudo-terminal. Closed by the destructor.
class Pty
{
public:
    Pty() = default;
    ~Pty();
    Pty(const Pty &) = delete;
    Pty &operator=(const Pty &) = delete;

    /// Opens a fresh pseudo-terminal whose other end is raw and does not echo. False leaves the reason in errno.
    [[nodiscard]] bool open();
    void close();
    [[nodiscard]] bool isOpen() const { return m_master >= 0; }

    [[nodiscard]] int descriptor() const { return m_master; }
    /// Path of the client's end.
    [[nodiscard]] const QString &clientPath() const { return m_clientPath; }
    /// Whether some process has the client's end open.
    [[nodiscard]] bool hasClient() const;

    /// Bytes from the client; empty if there are none or the client has left.
    [[nodiscard]] QByteArray read() const;
    /// Writes what the terminal accepts without blocking and returns how much that was.
    [[nodiscard]] qsizetype write(QByteArrayView bytes) const;
    /// Discards what the last client left unread, as a real line would. False if the client's end can no longer be
    /// opened.
    [[nodiscard]] bool discardUnread() const;

private:
    int m_master = -1;
    QString m_clientPath;
};

} // namespace sim
