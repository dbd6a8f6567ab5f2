#pragma once

#include "Base/Clock.h"

#include <QFuture>

namespace talmo {

/// The field with keyboard focus, in whatever application is frontmost.
class FocusedField {
public:
    virtual ~FocusedField() = default;
    /// Whether the field declares itself a password field; false if unknown. Takes `limit` at most, and looks only when
    /// called. Called on the main thread, finishes on any; fails only if Talmo is shutting down.
    virtual QFuture<bool> isPassword(Duration limit) = 0;
};

} // namespace talmo
