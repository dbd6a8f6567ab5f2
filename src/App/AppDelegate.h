#pragma once

#include "App/ApplicationShell.h"
#include "Input/Permissions/PermissionsManager.h"

#include <memory>

namespace talmo {

/// Handles the application's lifecycle events. Main thread.
class AppDelegate {
public:
    AppDelegate(std::shared_ptr<ApplicationShell> shell, std::shared_ptr<PermissionsManager> permissions);

    /// From here on, holding the key starts a dictation.
    void applicationDidFinishLaunching();
    /// Re-reads the permissions, which the user may have changed elsewhere.
    void applicationDidBecomeActive();
    static constexpr bool applicationSupportsSecureRestorableState() { return true; }

private:
    std::shared_ptr<ApplicationShell> m_shell;
    std::shared_ptr<PermissionsManager> m_permissions;
};

} // namespace talmo
