#include "Support/TestLoop.h"

#include "Waiting.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

namespace talmo::test {

void settle()
{
    do {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents));
}

bool waitFor(const std::function<bool()> &condition)
{
    return testbed::waitUntil(condition, std::chrono::seconds(10));
}

} // namespace talmo::test
