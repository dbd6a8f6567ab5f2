#include "Platform/Linux/Gnome/GnomeFocusedField.h"

#include "Platform/Linux/Session/PasswordFieldSearch.h"

#include <QDeadlineTimer>

#include <utility>

namespace talmo {

namespace {

bool ask(GnomeShell::Focus focus, QDeadlineTimer deadline)
{
    if (focus.isPassword) {
        return true;
    }
    // The call may have been queued behind a program that hangs.
    const auto bus = focus.process == 0 || deadline.hasExpired() ? nullptr : AccessibilityBus::connect(deadline);
    return bus && isInPasswordField(*bus, focus.process);
}

QCoro::Task<bool> askBoth(std::shared_ptr<GnomeShell> shell, QDeadlineTimer deadline)
{
    const auto asked = shell->focus();
    const auto focus = co_await asked;
    co_return ask(focus, deadline);
}

} // namespace

GnomeFocusedField::GnomeFocusedField(std::shared_ptr<GnomeShell> shell, std::shared_ptr<FocusedField> otherwise)
    : m_shell(std::move(shell)),
      m_otherwise(std::move(otherwise)),
      m_executor(SerialExecutor::onNewThread(QStringLiteral("talmo-focus")))
{
}

QFuture<bool> GnomeFocusedField::isPassword(Duration limit)
{
    if (!m_shell->isAvailable()) {
        return m_otherwise->isPassword(limit);
    }
    return m_executor->run<bool>(
        [shell = m_shell, deadline = QDeadlineTimer(limit)] { return askBoth(shell, deadline); });
}

} // namespace talmo
