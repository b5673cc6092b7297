#include "remote/files/Interruptible.h"

#include "common/EndSignals.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <functional>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace remote {

namespace {

constexpr int kReaderWaitMs = 100;

/// Waits until @p file is ready for @p event or at fault. @return false once an end signal has arrived
bool waitForFile(int file, short event, int timeoutMs)
{
    // The event loop empties the descriptor of the signals, but does not run here: one of the two reports a signal.
    if (EndSignals::haveArrived())
        return false;
    std::array<pollfd, 2> both{ { { EndSignals::descriptor(), POLLIN, 0 }, { file, event, 0 } } };
    while (::poll(both.data(), both.size(), timeoutMs) < 0 && errno == EINTR) {
    }
    return (both[0].revents & POLLIN) == 0;
}

bool takesBytes(int file)
{
    pollfd one{ file, POLLOUT, 0 };
    return ::poll(&one, 1, 0) == 1;
}

/// @return 0, otherwise the fault as an errno
int writeWhile(const std::function<bool()> &mayGoOn, int file, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        if (!mayGoOn())
            return EINTR;
        // A pipe that is ready takes this much without blocking.
        const auto count = ::write(file, bytes.data(), size_t(std::min<qsizetype>(bytes.size(), PIPE_BUF)));
        if (count > 0)
            bytes = bytes.sliced(count);
        else if (errno != EINTR && errno != EAGAIN)
            return errno;
    }
    return 0;
}

} // namespace

int Interruptible::openForWriting(const char *path)
{
    while (true) {
        const int file = ::open(path, O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
        if (file >= 0 || errno != ENXIO)
            return file;
        if (!waitForFile(-1, 0, kReaderWaitMs)) {
            errno = EINTR;
            return -1;
        }
    }
}

int Interruptible::write(int file, QByteArrayView bytes)
{
    return writeWhile([file] { return waitForFile(file, POLLOUT, -1); }, file, bytes);
}

void Interruptible::writeMessage(int file, QByteArrayView bytes)
{
    writeWhile([file] { return waitForFile(file, POLLOUT, -1) || takesBytes(file); }, file, bytes);
}

bool Interruptible::waitToRead(int file, int timeoutMs) { return waitForFile(file, POLLIN, timeoutMs); }

} // namespace remote
