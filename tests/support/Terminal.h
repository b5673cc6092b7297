#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QFile>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

/// A client's end of a link.
class Terminal
{
public:
    Terminal() = default;
    ~Terminal() { close(); }
    Q_DISABLE_COPY_MOVE(Terminal)

    /// Opens for itself alone, like a serial port.
    bool open(const QString &path)
    {
        const QByteArray file = QFile::encodeName(path);
        // A client that went away while it held the line for itself keeps others out for a moment.
        for (const QDeadlineTimer deadline(3000); m_descriptor < 0 && !deadline.hasExpired();)
            m_descriptor = ::open(file.constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        return ::ioctl(m_descriptor, TIOCEXCL) == 0;
    }
    void close()
    {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
    /// Whether poll() reports @p event in time.
    [[nodiscard]] bool sees(short event, int ms = 3000) const
    {
        pollfd state{ m_descriptor, event, 0 };
        return ::poll(&state, 1, ms) > 0 && (state.revents & event) != 0;
    }
    /// How much the terminal took at once.
    [[nodiscard]] qsizetype writeBytes(QByteArrayView bytes) const
    {
        return qMax<qsizetype>(0, ::write(m_descriptor, bytes.data(), size_t(bytes.size())));
    }
    /// Next bytes; empty after @p ms without any.
    [[nodiscard]] QByteArray readBytes(int ms = 3000) const
    {
        QByteArray bytes(4096, '\0');
        const auto count = sees(POLLIN, ms) ? ::read(m_descriptor, bytes.data(), size_t(bytes.size())) : 0;
        return bytes.first(qMax(count, 0));
    }

private:
    int m_descriptor = -1;
};
