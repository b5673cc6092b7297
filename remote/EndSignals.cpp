#include "EndSignals.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdint>
#include <functional>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

constexpr int kReaderWaitMs = 100;

/// Readable for good once an end signal has come; poll() ignores it while it is -1.
int endEvent = -1;
volatile std::sig_atomic_t endWanted = 0;

void noteSignal(int)
{
    endWanted = 1;
    const int kept = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(endEvent, &one, sizeof one);
    errno = kept;
}

/// Waits until @p file is ready for @p event or at fault. @return false once an end signal has come
bool waitForFile(int file, short event, int timeoutMs)
{
    std::array<pollfd, 2> both{ { { endEvent, POLLIN, 0 }, { file, event, 0 } } };
    while (::poll(both.data(), both.size(), timeoutMs) < 0 && errno == EINTR) {
    }
    return (both[0].revents & POLLIN) == 0;
}

bool takesBytes(int file)
{
    pollfd one{ file, POLLOUT, 0 };
    return ::poll(&one, 1, 0) == 1;
}

/// @return 0, otherwise what went wrong as an errno
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

int EndSignals::take()
{
    endEvent = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    // Without SA_RESTART: a write that blocks after all gives way.
    struct sigaction action = {};
    action.sa_handler = noteSignal;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    // Writes tell when a reader has gone or a file has reached its limit.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    return endEvent;
}

bool EndSignals::haveCome() { return endWanted != 0; }

int EndSignals::openForWriting(const char *path)
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

int EndSignals::write(int file, QByteArrayView bytes)
{
    return writeWhile([file] { return waitForFile(file, POLLOUT, -1); }, file, bytes);
}

void EndSignals::tell(int file, QByteArrayView bytes)
{
    writeWhile([file] { return waitForFile(file, POLLOUT, -1) || takesBytes(file); }, file, bytes);
}

bool EndSignals::waitToRead(int file, int timeoutMs) { return waitForFile(file, POLLIN, timeoutMs); }
