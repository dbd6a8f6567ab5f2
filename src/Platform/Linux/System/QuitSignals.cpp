#include "Platform/Linux/System/QuitSignals.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace talmo {

namespace {

/// The descriptor for the handler: written once, before the handler is installed.
std::atomic<int> noted = -1;
std::atomic<pid_t> owner = 0;

/// Async-signal-safe. A child that has not called exec yet also has this handler, and shares the descriptor.
void note(int /*number*/)
{
    const int before = errno;
    const std::uint64_t one = 1;
    if (::getpid() == owner.load() && ::write(noted.load(), &one, sizeof(one)) < 0) {
        // The counter is full: a request is pending anyway.
    }
    errno = before;
}

} // namespace

void QuitSignals::install()
{
    if (noted.load() < 0) {
        noted = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
        owner = ::getpid();
    }
    struct sigaction action{};
    action.sa_handler = &note;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        ::sigaction(number, &action, nullptr);
    }
}

QuitSignals::QuitSignals()
    : m_notifier(std::make_unique<QSocketNotifier>(noted.load(), QSocketNotifier::Read))
{
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        std::uint64_t count = 0;
        if (::read(noted.load(), &count, sizeof(count)) == sizeof(count)) {
            Q_EMIT quitRequested();
        }
    });
}

} // namespace talmo
