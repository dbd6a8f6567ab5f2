#pragma once

#include "Input/Hotkey/CancelKey.h"

#include <functional>
#include <utility>

namespace talmo::test {

/// The test presses it.
class FakeCancelKey final : public CancelKey {
public:
    /// Another program holds the key.
    bool isTaken = false;
    int grabs = 0;

    bool isGrabbed() const { return m_onPressed != nullptr; }
    void press()
    {
        if (m_onPressed) {
            const auto report = m_onPressed;
            report();
        }
    }

    bool grab(std::function<void()> onPressed) override
    {
        ++grabs;
        m_onPressed = isTaken ? nullptr : std::move(onPressed);
        return !isTaken;
    }
    void release() override { m_onPressed = nullptr; }

private:
    std::function<void()> m_onPressed;
};

} // namespace talmo::test
