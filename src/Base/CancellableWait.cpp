#include "Base/CancellableWait.h"

#include "Base/Error.h"
#include "Base/Log.h"

#include <QCoro/QCoroFuture>

namespace talmo {

QCoro::Task<bool> hasElapsed(QFuture<void> wait)
{
    bool isCancelled = false;
    try {
        co_await wait;
    } catch (const Cancelled &) {
        isCancelled = true;
    }
    co_return !isCancelled;
}

QCoro::Task<bool> isTimeUp(QFuture<void> limit)
{
    try {
        const bool isDue = co_await hasElapsed(limit);
        co_return isDue;
    } catch (const std::exception &error) {
        generalLog().error("a timer failed: %s", {QString::fromUtf8(error.what())});
    }
    co_return true;
}

} // namespace talmo
