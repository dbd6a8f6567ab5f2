#pragma once

namespace talmo {

/// How an application presents itself on the desktop.
enum class ActivationPolicy { Regular, Accessory };

/// The application as the desktop sees it. Main thread.
class ApplicationShell {
public:
    virtual ~ApplicationShell() = default;

    /// Accessory: nothing in the dock or task bar stands for the application, and it does not end with its last window.
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    /// Brings Talmo's windows to the front, whatever the user is doing; for when the user asked for it.
    virtual void activateIgnoringOtherApps() = 0;
    /// Ends the application as the desktop would; returns at once.
    virtual void terminate() = 0;
};

} // namespace talmo
