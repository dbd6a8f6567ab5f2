#pragma once

#include <functional>

namespace talmo {

/// The key that discards a recording: Escape. Main thread.
class CancelKey {
public:
    virtual ~CancelKey() = default;

    /// Until release(), presses call this and reach no other application. False if another program holds the key; it
    /// then cannot discard a recording.
    virtual bool grab(std::function<void()> onPressed) = 0;
    /// Other applications get the key again.
    virtual void release() = 0;
};

} // namespace talmo
