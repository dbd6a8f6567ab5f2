#pragma once

#include <QFuture>

namespace talmo {

/// The keyboard focus of the frontmost window, which Talmo's menu borrows. Main thread.
class FrontmostFocus {
public:
    virtual ~FrontmostFocus() = default;

    /// Call before grabbing the keyboard; records the window to return focus to.
    virtual void remember() = 0;
    /// Finishes when that window has the focus again, or after half a second if it never does. Never fails.
    virtual QFuture<void> returned() = 0;
};

} // namespace talmo
