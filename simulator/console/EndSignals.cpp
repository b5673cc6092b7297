#include "simulator/console/EndSignals.h"

#include <QSocketNotifier>

#include <csignal>

#include <sys/signalfd.h>
#include <unistd.h>

namespace sim {

namespace {

sigset_t endSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

} // namespace

EndSignals::EndSignals(QObject *parent) : QObject(parent)
{
    const sigset_t signals = endSignals();
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    m_descriptor = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &EndSignals::read);
}

EndSignals::~EndSignals()
{
    m_notifier.reset();
    ::close(m_descriptor);
}

void EndSignals::read()
{
    signalfd_siginfo info = {};
    if (::read(m_descriptor, &info, sizeof info) == sizeof info)
        Q_EMIT received(int(info.ssi_signo));
}

} // namespace sim
