#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <mutex>

namespace talmo {

/// The keys that Talmo has posted and not yet received, so that its key monitor can tell them from the user's. Any
/// thread.
class PostedKeys {
public:
    void expect(std::uint8_t keyCode, bool isDown);

    /// True, once per expected key, if this is a key that Talmo posted.
    bool take(std::uint8_t keyCode, bool isDown);

    /// While a trigger key that is kept from the other programs is down, Talmo itself has the keyboard, and a key that
    /// it posted would reach no window.
    void setTriggerGrabbed(bool isGrabbed) { m_isTriggerGrabbed = isGrabbed; }
    bool isTriggerGrabbed() const { return m_isTriggerGrabbed; }

private:
    struct Key {
        std::uint8_t keyCode;
        bool isDown;
        std::chrono::steady_clock::time_point posted;
    };
    std::mutex m_mutex;
    std::deque<Key> m_expected;
    std::atomic<bool> m_isTriggerGrabbed = false;
};

} // namespace talmo
