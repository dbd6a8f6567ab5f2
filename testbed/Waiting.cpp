#include "Waiting.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

namespace talmo::testbed {

bool waitUntil(const std::function<bool()> &condition, Timeout timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    QTimer wake; // Only to wake the loop below when the time is up.
    wake.setTimerType(Qt::PreciseTimer);
    wake.start(timeout);
    while (!condition()) {
        const auto left = deadline - std::chrono::steady_clock::now();
        if (left.count() <= 0) {
            return false;
        }
        // Timers may fire a little early; this one is then restarted for the rest.
        wake.setInterval(std::chrono::ceil<std::chrono::milliseconds>(left));
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

bool pollUntil(const std::function<bool()> &condition, Timeout timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        sleepFor(std::chrono::milliseconds(10));
    }
    return true;
}

void sleepFor(Timeout time)
{
    waitUntil([] { return false; }, time);
}

} // namespace talmo::testbed
