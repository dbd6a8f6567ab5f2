#include "Waiting.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

namespace talmo::testbed {

bool waitUntil(const std::function<bool()> &condition, Patience patience)
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    QTimer wake; // Only to wake the loop below when the time is up.
    wake.setTimerType(Qt::PreciseTimer);
    wake.start(patience);
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

bool pollUntil(const std::function<bool()> &condition, Patience patience)
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        passTime(std::chrono::milliseconds(10));
    }
    return true;
}

void passTime(Patience time)
{
    waitUntil([] { return false; }, time);
}

} // namespace talmo::testbed
