#pragma once

#include "Insertion/CursorWatch.h"

#include <utility>

namespace talmo::test {

/// A mark stays good until the test says otherwise.
class FakeCursorWatch final : public CursorWatch {
public:
    bool isMarked = false;
    /// As if the user had typed or clicked.
    void touch() { isMarked = false; }

    bool markPlace() override { return std::exchange(isMarked, true); }
    void forget() override { isMarked = false; }
};

} // namespace talmo::test
