#pragma once

#include <QFuture>

#include <chrono>
#include <functional>

namespace talmo::test {

/// Runs this thread's event loop until nothing is left to do in it.
void settle();

/// Runs the event loop until the condition holds, looking after every event. False when ten seconds were not enough:
/// a test that gets that far has failed.
bool waitFor(const std::function<bool()> &condition, std::chrono::milliseconds patience = std::chrono::seconds(10));

/// The same for a future, for tests of parts with threads of their own.
template <typename T>
bool waitFor(const QFuture<T> &future)
{
    return waitFor([&future] { return future.isFinished(); });
}

} // namespace talmo::test
