#pragma once

namespace talmo {

/// Whether the text cursor is still where Talmo inserted last. Costs nothing until a place is marked, nor after the
/// user has typed or clicked. Main thread.
class CursorWatch {
public:
    virtual ~CursorWatch() = default;

    /// Marks the window with keyboard focus, into which a text is about to be inserted. True if the previous mark is
    /// still good: the same window has the focus, and no key has been pressed or button clicked since. The dictation
    /// key and the keys that Talmo posts do not count.
    virtual bool markPlace() = 0;
    /// The last mark is no longer valid.
    virtual void forget() = 0;
};

} // namespace talmo
