#pragma once

#include "Input/Hotkey/EventMonitor.h"
#include "Input/Hotkey/KeyMonitors.h"
#include "Platform/Linux/Wayland/Kde/KdeKeyGuard.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QList>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

/// The dictation key on KDE, as a global shortcut, which takes it from the other programs. KDE reports the release when
/// any key goes up, and does not tell the left from the right modifier, so modifiers cannot be used. Main thread.
class KdeKeys final : public QObject, public EventMonitor {
    Q_OBJECT
public:
    /// The first of the keys (X key symbols) that can be a shortcut; Pause if none can.
    static quint32 usableKey(const QList<quint32> &keySymbols);

    /// Null if there is no service for shortcuts. Waits for it for at most a second. `isApplicationActive` returns
    /// whether one of Talmo's own windows has the focus.
    static std::shared_ptr<KdeKeys> open(quint32 keySymbol, std::function<bool()> isApplicationActive,
                                         QDBusConnection bus = QDBusConnection::sessionBus());
    ~KdeKeys() override;
    KdeKeys(const KdeKeys &) = delete;
    KdeKeys &operator=(const KdeKeys &) = delete;

    /// False if the key is already another program's shortcut.
    bool hasKey() const { return m_hasKey; }

    std::shared_ptr<EventMonitorToken>
    addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler) override;
    std::shared_ptr<EventMonitorToken>
    addLocalMonitor(quint64 eventMask,
                    std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler) override;

private Q_SLOTS:
    void handlePress(const QString &component, const QString &action, qlonglong time);
    void handleRelease(const QString &component, const QString &action, qlonglong time);

private: // NOLINT(readability-redundant-access-specifiers): no slots.
    KdeKeys(int key, std::function<bool()> isApplicationActive, QDBusConnection bus);
    void takeKey();
    void report(bool isDown);

    int m_key; ///< As Qt numbers it.
    std::function<bool()> m_isApplicationActive;
    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    bool m_hasKey = false;
    bool m_isHeld = false;
    KeyMonitors m_monitors;
    std::unique_ptr<KdeKeyGuard> m_guard;
};

} // namespace talmo
