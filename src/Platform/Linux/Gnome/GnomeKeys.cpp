#include "Platform/Linux/Gnome/GnomeKeys.h"

#include "Input/Hotkey/GlobalHotkeyManager.h"

#include <utility>

namespace talmo {

namespace {

/// Escape, alone and with the modifiers among the trigger keys, since one of them may be held.
QStringList escapeKeys(const QStringList &triggerKeys)
{
    QStringList keys = {QStringLiteral("Escape")};
    for (const auto &trigger : triggerKeys) {
        for (const auto *modifier : {"Control", "Shift", "Alt", "Super"}) {
            const QString key = QStringLiteral("<%1>Escape").arg(QLatin1String(modifier));
            if (trigger.startsWith(QLatin1String(modifier) + QLatin1Char('_')) && !keys.contains(key)) {
                keys.append(key);
            }
        }
    }
    return keys;
}

} // namespace

GnomeKeys::GnomeKeys(std::shared_ptr<GnomeShell> shell, QStringList triggerKeys, Otherwise otherwise,
                     std::function<bool()> isApplicationActive)
    : m_shell(std::move(shell)),
      m_triggerKeys(std::move(triggerKeys)),
      m_otherwise(std::move(otherwise)),
      m_isApplicationActive(std::move(isApplicationActive))
{
    m_shell->setOnKey([this](const QString &key, bool isDown) { handleKey(key, isDown); });
    m_shell->setOnAvailabilityChanged([this] { releaseAll(); });
}

GnomeKeys::~GnomeKeys()
{
    m_shell->setOnKey({});
    m_shell->setOnAvailabilityChanged({});
}

std::shared_ptr<EventMonitorToken> GnomeKeys::addGlobalMonitor(quint64 eventMask,
                                                               std::function<void(const FlagsChangedEvent &)> handler)
{
    if (eventMask != GlobalHotkeyManager::flagsChangedMask) {
        return nullptr;
    }
    // The same monitor where the extension is not available.
    auto otherwise =
        m_otherwise.monitor->addGlobalMonitor(eventMask, [shell = m_shell, handler](const FlagsChangedEvent &event) {
            if (!shell->isAvailable()) {
                handler(event);
            }
        });
    const auto monitor = m_monitors.add(false, std::move(handler), std::move(otherwise));
    watch();
    return monitor;
}

std::shared_ptr<EventMonitorToken>
GnomeKeys::addLocalMonitor(quint64 eventMask,
                           std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler)
{
    if (eventMask != GlobalHotkeyManager::flagsChangedMask) {
        return nullptr;
    }
    auto otherwise =
        m_otherwise.monitor->addLocalMonitor(eventMask, [shell = m_shell, handler](const FlagsChangedEvent &event) {
            return shell->isAvailable() ? std::optional(event) : handler(event);
        });
    const auto monitor = m_monitors.add(
        true, [handler = std::move(handler)](const FlagsChangedEvent &event) { handler(event); }, std::move(otherwise));
    watch();
    return monitor;
}

bool GnomeKeys::grab(std::function<void()> onPressed)
{
    if (!m_shell->isAvailable()) {
        return m_otherwise.cancelKey->grab(std::move(onPressed));
    }
    m_onCancel = std::move(onPressed);
    watch();
    return true;
}

void GnomeKeys::release()
{
    m_otherwise.cancelKey->release();
    if (std::exchange(m_onCancel, {})) {
        watch();
    }
}

void GnomeKeys::watch()
{
    m_shell->watchKeys(m_onCancel ? m_triggerKeys + escapeKeys(m_triggerKeys) : m_triggerKeys);
}

void GnomeKeys::handleKey(const QString &key, bool isDown)
{
    if (key.endsWith(QLatin1String("Escape"))) {
        if (isDown && m_onCancel) {
            const auto onCancel = m_onCancel; // It may end the grab.
            onCancel();
        }
        return;
    }
    const bool wasDown = !m_held.empty();
    if (isDown) {
        m_held.insert(key);
    } else {
        m_held.erase(key);
    }
    if (wasDown == m_held.empty()) {
        report(isDown);
    }
}

/// An extension that is gone reports no release.
void GnomeKeys::releaseAll()
{
    if (!m_held.empty()) {
        m_held.clear();
        report(false);
    }
}

void GnomeKeys::report(bool isDown)
{
    m_monitors.report(isDown, m_isApplicationActive());
}

} // namespace talmo
