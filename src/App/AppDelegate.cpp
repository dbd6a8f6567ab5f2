#include "App/AppDelegate.h"

#include "App/TalmoCoordinator.h"

#include <utility>

namespace talmo {

AppDelegate::AppDelegate(std::shared_ptr<ApplicationShell> shell, std::shared_ptr<PermissionsManager> permissions)
    : m_shell(std::move(shell)),
      m_permissions(std::move(permissions))
{
}

void AppDelegate::applicationDidFinishLaunching()
{
    m_shell->setActivationPolicy(ActivationPolicy::Accessory);
    TalmoCoordinator::shared().start();
}

void AppDelegate::applicationDidBecomeActive()
{
    m_permissions->refresh();
}

} // namespace talmo
