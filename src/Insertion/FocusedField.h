#pragma once

#include "Base/Clock.h"

#include <QFuture>

namespace talmo {

/// The field that has the keyboard, in whatever application is in front.
class FocusedField {
public:
    virtual ~FocusedField() = default;
    /// Whether the field says that it is for a password; false when that is unknown. Looks for `limit` at most, and
    /// only when asked. Called on the main thread, finishes on any; never fails unless the program ends.
    virtual QFuture<bool> isPassword(Duration limit) = 0;
};

} // namespace talmo
