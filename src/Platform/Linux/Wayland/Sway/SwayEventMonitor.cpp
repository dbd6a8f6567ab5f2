#include "Platform/Linux/Wayland/Sway/SwayEventMonitor.h"

#include <utility>

namespace talmo {

namespace {

const QString pressed = QStringLiteral("press");
const QString released = QStringLiteral("release");

} // namespace

SwayEventMonitor::SwayEventMonitor(std::unique_ptr<SwayIpc> ipc, QString key, std::function<bool()> isApplicationActive)
    : m_ipc(std::move(ipc)),
      m_key(std::move(key)),
      m_isApplicationActive(std::move(isApplicationActive))
{
    m_ipc->setOnBinding([this](const QString &words) { handleBinding(words); });
    m_ipc->setOnReload([this] {
        if (m_isBound) {
            m_isBound = bind();
        }
    });
}

SwayEventMonitor::~SwayEventMonitor()
{
    if (m_isBound && m_ipc->isAlive()) {
        m_ipc->run(QStringLiteral("unbindsym --no-repeat %1; unbindsym --release %1").arg(m_key));
    }
}

bool SwayEventMonitor::bind()
{
    return m_ipc->run(QStringLiteral("bindsym --no-repeat %1 %2").arg(m_key, SwayIpc::bindingCommand(pressed))) &&
           m_ipc->run(QStringLiteral("bindsym --release %1 %2").arg(m_key, SwayIpc::bindingCommand(released)));
}

std::shared_ptr<EventMonitorToken>
SwayEventMonitor::addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler)
{
    return isBound() ? m_monitors.addGlobal(eventMask, std::move(handler)) : nullptr;
}

std::shared_ptr<EventMonitorToken>
SwayEventMonitor::addLocalMonitor(quint64 eventMask,
                                  std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler)
{
    return isBound() ? m_monitors.addLocal(eventMask, std::move(handler)) : nullptr;
}

bool SwayEventMonitor::isBound()
{
    m_isBound = m_isBound || bind();
    return m_isBound;
}

void SwayEventMonitor::handleBinding(const QString &words)
{
    if (words == pressed) {
        if (m_isHeld) {
            report(false);
        }
        m_isHeld = true;
        report(true);
    } else if (words == released && std::exchange(m_isHeld, false)) {
        report(false);
    }
}

void SwayEventMonitor::report(bool isDown)
{
    m_monitors.report(isDown, m_isApplicationActive());
}

} // namespace talmo
