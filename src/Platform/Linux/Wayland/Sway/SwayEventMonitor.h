#pragma once

#include "Input/Hotkey/EventMonitor.h"
#include "Input/Hotkey/KeyMonitors.h"
#include "Platform/Linux/Wayland/Sway/SwayIpc.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace talmo {

/// The dictation key on sway, by bindings that are added when a monitor is installed and removed with the last one. The
/// key is taken from other programs. sway reports no release if another key goes down in between, so a modifier is a
/// bad choice, and a press while the key is held ends the earlier hold. Main thread.
class SwayEventMonitor final : public EventMonitor {
public:
    /// No modifier: sway reports no release of one if another key goes down in between.
    static QStringList defaultKeys() { return {QStringLiteral("Pause")}; }

    /// `key`: a key symbol's name, such as "Pause". `isApplicationActive` returns whether one of Talmo's own windows
    /// has the keyboard focus.
    SwayEventMonitor(std::unique_ptr<SwayIpc> ipc, QString key, std::function<bool()> isApplicationActive);
    ~SwayEventMonitor() override;
    SwayEventMonitor(const SwayEventMonitor &) = delete;
    SwayEventMonitor &operator=(const SwayEventMonitor &) = delete;

    std::shared_ptr<EventMonitorToken>
    addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler) override;
    std::shared_ptr<EventMonitorToken>
    addLocalMonitor(quint64 eventMask,
                    std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler) override;

    /// Whether sway still reports the key to Talmo.
    bool isUsable() const { return m_ipc->isAlive(); }

private:
    /// Binds the key if it is not yet bound.
    bool isBound();
    bool bind();
    void handleBinding(const QString &words);
    void report(bool isDown);

    std::unique_ptr<SwayIpc> m_ipc;
    QString m_key;
    std::function<bool()> m_isApplicationActive;
    bool m_isBound = false;
    bool m_isHeld = false;
    KeyMonitors m_monitors;
};

} // namespace talmo
