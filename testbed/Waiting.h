#pragma once

#include <chrono>
#include <functional>

namespace talmo::testbed {

using Patience = std::chrono::milliseconds;

/// Runs the event loop until the condition holds, looking at it after every event; false when the time is up.
bool waitUntil(const std::function<bool()> &condition, Patience patience);

/// The same for what no event tells of, such as another program's clipboard: looks again every few milliseconds.
bool pollUntil(const std::function<bool()> &condition, Patience patience);

/// Lets this much time pass while the event loop runs: for a person's pace, never to wait for something to happen.
void passTime(Patience time);

} // namespace talmo::testbed
