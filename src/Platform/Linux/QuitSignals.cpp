#include "Platform/Linux/QuitSignals.h"

#include <csignal>
#include <sys/signalfd.h>

namespace talmo {

namespace {

sigset_t quitSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signals, number);
    }
    return signals;
}

} // namespace

void QuitSignals::holdBack()
{
    const sigset_t signals = quitSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

QuitSignals::QuitSignals()
{
    const sigset_t signals = quitSignals();
    m_descriptor = FileDescriptor(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor.get(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        signalfd_siginfo information{};
        if (read(m_descriptor.get(), &information, sizeof(information)) == sizeof(information)) {
            Q_EMIT quitRequested();
        }
    });
}

} // namespace talmo
