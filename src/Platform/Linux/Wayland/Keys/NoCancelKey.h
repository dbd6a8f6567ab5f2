#pragma once

#include "Input/Hotkey/CancelKey.h"

namespace talmo {

/// Where Talmo cannot take Escape from other programs only for as long as it lives: a key that stayed taken after a
/// crash would be worse than none.
class NoCancelKey final : public CancelKey {
public:
    bool grab(std::function<void()> /*onPressed*/) override { return false; }
    void release() override {}
};

} // namespace talmo
