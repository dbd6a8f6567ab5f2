#pragma once

#include "App/ApplicationShell.h"
#include "Input/Permissions/PermissionsManager.h"

#include <memory>

namespace talmo {

/// What Talmo does at the turns of the application's life. Main thread.
class AppDelegate {
public:
    AppDelegate(std::shared_ptr<ApplicationShell> shell, std::shared_ptr<PermissionsManager> permissions);

    /// From here on, holding the key dictates.
    void applicationDidFinishLaunching();
    /// Permissions that were changed elsewhere meanwhile show as soon as the user comes back.
    void applicationDidBecomeActive();
    static constexpr bool applicationSupportsSecureRestorableState() { return true; }

private:
    std::shared_ptr<ApplicationShell> m_shell;
    std::shared_ptr<PermissionsManager> m_permissions;
};

} // namespace talmo
