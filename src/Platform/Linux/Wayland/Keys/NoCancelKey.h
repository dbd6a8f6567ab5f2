#pragma once

#include "Input/Hotkey/CancelKey.h"

namespace talmo {

/// For desktops on which a crashed Talmo would keep Escape from other programs: that would be worse than having no
/// cancel key.
class NoCancelKey final : public CancelKey {
public:
    bool grab(std::function<void()> /*onPressed*/) override { return false; }
    void release() override {}
};

} // namespace talmo
