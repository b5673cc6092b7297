#include "common/EndSignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

// A signal handler may do little more than write, and only to what it reaches without an object.
std::array<int, 2> signalPipe{ -1, -1 };
volatile std::sig_atomic_t signalArrived = 0;

extern "C" void noteSignal(int)
{
    signalArrived = 1;
    const int interrupted = errno;
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(signalPipe[1], &byte, 1);
    errno = interrupted;
}

bool isIgnored(int signal)
{
    struct sigaction current = {};
    ::sigaction(signal, nullptr, &current);
    return current.sa_handler == SIG_IGN;
}

} // namespace

EndSignals::EndSignals(std::initializer_list<int> ending, std::initializer_list<int> ignored)
{
    for (const int signal : ignored)
        std::signal(signal, SIG_IGN);
    if (::pipe2(signalPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    for (const int signal : ending) {
        if (signal != SIGHUP || !isIgnored(signal))
            m_ending.push_back(signal);
    }
    m_notifier = std::make_unique<QSocketNotifier>(signalPipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &EndSignals::read);
    handle(noteSignal);
}

EndSignals::~EndSignals()
{
    if (!m_notifier)
        return;
    handle(SIG_IGN);
    m_notifier.reset();
    for (int &end : signalPipe) {
        ::close(end);
        end = -1;
    }
}

bool EndSignals::haveArrived() { return signalArrived != 0; }

int EndSignals::descriptor() { return signalPipe[0]; }

/// Without SA_RESTART, so that a write that blocks gives way.
void EndSignals::handle(void (*handler)(int)) const
{
    struct sigaction action = {};
    action.sa_handler = handler;
    for (const int signal : m_ending)
        ::sigaction(signal, &action, nullptr);
}

void EndSignals::read()
{
    std::array<char, 16> bytes;
    while (::read(signalPipe[0], bytes.data(), bytes.size()) > 0) {
    }
    Q_EMIT arrived();
}
