#pragma once

#include "Insertion/CursorWatch.h"

namespace talmo {

/// Wayland does not tell Talmo what the user types and clicks in other windows.
class UnknownCursor final : public CursorWatch {
public:
    bool markPlace() override { return false; }
    void forget() override {}
};

} // namespace talmo
