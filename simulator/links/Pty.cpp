#include "simulator/links/Pty.h"

#include <QFile>

#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace sim {

namespace {

int openClientEnd(const QString &path)
{
    return ::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
}

/// A terminal starts with echo and line editing, and would send the chassis its own output back until the client sets
/// it up.
bool makeRaw(int descriptor)
{
    termios settings{};
    if (::tcgetattr(descriptor, &settings) != 0)
        return false;
    ::cfmakeraw(&settings);
    return ::cfsetspeed(&settings, B921600) == 0 && ::tcsetattr(descriptor, TCSANOW, &settings) == 0;
}

} // namespace

Pty::~Pty() { close(); }

bool Pty::open()
{
    close();
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    std::array<char, 128> name{};
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0 ||
        ::ptsname_r(m_master, name.data(), name.size()) != 0) {
        close();
        return false;
    }
    m_clientPath = QFile::decodeName(name.data());
    // Until its first close an unused terminal does not report that nobody has it open.
    const int client = openClientEnd(m_clientPath);
    const bool raw = client >= 0 && makeRaw(client);
    if (client >= 0)
        ::close(client);
    if (!raw)
        close();
    return raw;
}

void Pty::close()
{
    if (m_master >= 0)
        ::close(m_master);
    m_master = -1;
    m_clientPath.clear();
}

bool Pty::hasClient() const
{
    pollfd state{ m_master, 0, 0 };
    return isOpen() && ::poll(&state, 1, 0) >= 0 && (state.revents & POLLHUP) == 0;
}

QByteArray Pty::read() const
{
    std::array<char, 4096> buffer; // NOLINT(*-member-init): filled by read
    const ssize_t count = ::read(m_master, buffer.data(), buffer.size());
    return count > 0 ? QByteArray(buffer.data(), count) : QByteArray();
}

qsizetype Pty::write(QByteArrayView bytes) const
{
    const ssize_t count = ::write(m_master, bytes.data(), size_t(bytes.size()));
    return count > 0 ? count : 0;
}

bool Pty::discardUnread() const
{
    const int client = openClientEnd(m_clientPath);
    if (client < 0)
        return false;
    ::tcflush(client, TCIFLUSH);
    ::close(client);
    return true;
}

} // namespace sim
