#pragma once

#include "App/ApplicationShell.h"

#include <functional>

namespace talmo {

/// Talmo's activation on an X11 desktop.
class X11ApplicationShell final : public ApplicationShell {
public:
    /// `quit` starts quitting the program.
    explicit X11ApplicationShell(std::function<void()> quit);

    void setActivationPolicy(ActivationPolicy policy) override;
    void activateIgnoringOtherApps() override;
    void terminate() override;

private:
    std::function<void()> m_quit;
};

} // namespace talmo
