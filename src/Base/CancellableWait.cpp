#include "Base/CancellableWait.h"

#include "Base/Error.h"

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

} // namespace talmo
