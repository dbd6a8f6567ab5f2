#include "Platform/Linux/Wayland/Windows/WaylandFocusedField.h"

#include "Platform/Linux/Session/PasswordFieldSearch.h"

namespace talmo {

namespace {

bool ask(QDeadlineTimer deadline)
{
    // The call may have been queued behind a program that hangs.
    const auto bus = deadline.hasExpired() ? nullptr : AccessibilityBus::connect(deadline);
    return bus && isInActivePasswordField(*bus);
}

} // namespace

WaylandFocusedField::WaylandFocusedField()
    : m_executor(SerialExecutor::onNewThread(QStringLiteral("talmo-focus")))
{
}

QFuture<bool> WaylandFocusedField::isPassword(Duration limit)
{
    return m_executor->call([deadline = QDeadlineTimer(limit)] { return ask(deadline); });
}

} // namespace talmo
