#include "app/UnixSignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

// A signal handler may do nothing but write, and only to what it reaches without an object.
std::array<int, 2> signalPipe{ -1, -1 };

extern "C" void handleTermination(int)
{
    const int interrupted = errno;
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(signalPipe[1], &byte, 1);
    errno = interrupted;
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : { SIGTERM, SIGINT })
        ::sigaction(signal, &action, nullptr);
    struct sigaction inherited = {};
    ::sigaction(SIGHUP, nullptr, &inherited);
    if (inherited.sa_handler != SIG_IGN) // a program that is to outlive its terminal
        ::sigaction(SIGHUP, &action, nullptr);
}

} // namespace

UnixSignals::UnixSignals()
{
    ::signal(SIGPIPE, SIG_IGN); // nobody may be reading the log
    if (::pipe2(signalPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(signalPipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &UnixSignals::read);
    setHandler(handleTermination);
}

UnixSignals::~UnixSignals()
{
    if (!m_notifier)
        return;
    setHandler(SIG_IGN); // a repeat must not cut short the end that the first one has begun
    m_notifier.reset();
    for (int &end : signalPipe) {
        ::close(end);
        end = -1;
    }
}

void UnixSignals::read()
{
    std::array<char, 16> bytes;
    while (::read(signalPipe[0], bytes.data(), bytes.size()) > 0) {
    }
    Q_EMIT terminationRequested();
}
