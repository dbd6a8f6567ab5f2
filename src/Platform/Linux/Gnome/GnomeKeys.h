#pragma once

#include "Input/Hotkey/CancelKey.h"
#include "Input/Hotkey/EventMonitor.h"
#include "Input/Hotkey/KeyMonitors.h"
#include "Platform/Linux/Gnome/GnomeShell.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <set>
#include <vector>

namespace talmo {

/// The dictation key and Escape, as the extension reports them; without the extension, as `otherwise` does. Keys are
/// taken from other programs while they are watched. Main thread.
class GnomeKeys final : public EventMonitor, public CancelKey {
public:
    struct Otherwise {
        std::shared_ptr<EventMonitor> monitor;
        std::shared_ptr<CancelKey> cancelKey;
    };

    /// `triggerKeys`: X key names. `isApplicationActive` returns whether one of Talmo's own windows has the focus.
    GnomeKeys(std::shared_ptr<GnomeShell> shell, QStringList triggerKeys, Otherwise otherwise,
              std::function<bool()> isApplicationActive);
    ~GnomeKeys() override;
    GnomeKeys(const GnomeKeys &) = delete;
    GnomeKeys &operator=(const GnomeKeys &) = delete;

    std::shared_ptr<EventMonitorToken>
    addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler) override;
    std::shared_ptr<EventMonitorToken>
    addLocalMonitor(quint64 eventMask,
                    std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler) override;

    bool grab(std::function<void()> onPressed) override;
    void release() override;

private:
    void watch();
    void handleKey(const QString &key, bool isDown);
    void releaseAll();
    void report(bool isDown);

    std::shared_ptr<GnomeShell> m_shell;
    QStringList m_triggerKeys;
    Otherwise m_otherwise;
    std::function<bool()> m_isApplicationActive;
    std::function<void()> m_onCancel;
    std::set<QString> m_held;
    KeyMonitors m_monitors;
};

} // namespace talmo
