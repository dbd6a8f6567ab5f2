#include "Support/TestLoop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QTimer>

namespace talmo::test {

void settle()
{
    do {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents));
}

bool waitFor(const std::function<bool()> &condition, std::chrono::milliseconds patience)
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    QTimer wake;
    wake.setTimerType(Qt::PreciseTimer);
    wake.start(patience);
    while (!condition()) {
        const auto left = deadline - std::chrono::steady_clock::now();
        if (left.count() <= 0) {
            return false;
        }
        wake.setInterval(std::chrono::ceil<std::chrono::milliseconds>(left));
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace talmo::test
