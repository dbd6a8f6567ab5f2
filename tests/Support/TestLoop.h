#pragma once

#include <QFuture>
#include <QFutureWatcher>

#include <functional>

namespace talmo::test {

/// Runs this thread's event loop until it is idle.
void settle();

/// Runs the event loop until the condition holds, checking after every event. False after ten seconds: the test has
/// failed.
bool waitFor(const std::function<bool()> &condition);

/// The same for a future that may finish on another thread; the watcher then wakes this thread's loop.
template <typename T>
bool waitFor(const QFuture<T> &future)
{
    QFutureWatcher<T> watcher;
    watcher.setFuture(future);
    return waitFor([&future] { return future.isFinished(); });
}

} // namespace talmo::test
