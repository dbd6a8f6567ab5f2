#pragma once

#include <QFuture>
#include <QFutureWatcher>

#include <functional>

namespace talmo::test {

/// Runs this thread's event loop until nothing is left to do in it.
void settle();

/// Runs the event loop until the condition holds, looking after every event. False when ten seconds were not enough:
/// a test that gets that far has failed.
bool waitFor(const std::function<bool()> &condition);

/// The same for a future, which may be finished on another thread: the watcher wakes this one's loop for it.
template <typename T>
bool waitFor(const QFuture<T> &future)
{
    QFutureWatcher<T> watcher;
    watcher.setFuture(future);
    return waitFor([&future] { return future.isFinished(); });
}

} // namespace talmo::test
