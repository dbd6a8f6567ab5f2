#pragma once

namespace talmo {

/// How an application appears on the desktop.
enum class ActivationPolicy { Regular, Accessory };

/// The application as the desktop sees it. Main thread.
class ApplicationShell {
public:
    virtual ~ApplicationShell() = default;

    /// Accessory: the application does not appear in the dock or task bar, and does not quit with its last window.
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    /// Raises Talmo's windows above other applications; only at the user's request.
    virtual void activateIgnoringOtherApps() = 0;
    /// Quits as if the desktop had asked for it; returns at once.
    virtual void terminate() = 0;
};

} // namespace talmo
