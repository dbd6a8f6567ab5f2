#pragma once

#include <QFuture>

namespace talmo {

/// The keyboard's place in the window in front, which Talmo's menu borrows. Main thread.
class FrontmostFocus {
public:
    virtual ~FrontmostFocus() = default;

    /// Called before the keyboard is borrowed: here it has to come back to.
    virtual void remember() = 0;
    /// Finishes when keys go there again, or after half a second at most, if it never comes back. Never fails.
    virtual QFuture<void> returned() = 0;
};

} // namespace talmo
