#pragma once

#include <chrono>
#include <functional>

namespace talmo::testbed {

using Timeout = std::chrono::milliseconds;

/// Runs the event loop until the condition holds, checking it after every event; false on timeout.
bool waitUntil(const std::function<bool()> &condition, Timeout timeout);

/// Like waitUntil(), but checks every few milliseconds, for conditions that cause no event, such as another program's
/// clipboard.
bool pollUntil(const std::function<bool()> &condition, Timeout timeout);

/// Runs the event loop for this long, to imitate a user's pace; never use it to wait for something to happen.
void sleepFor(Timeout time);

} // namespace talmo::testbed
