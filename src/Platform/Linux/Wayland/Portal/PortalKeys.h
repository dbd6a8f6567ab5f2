#pragma once

#include "Base/Clock.h"
#include "Input/Hotkey/EventMonitor.h"
#include "Input/Hotkey/KeyMonitors.h"
#include "Platform/Linux/Wayland/Portal/PortalRequest.h"

#include <QCoro/QCoroTask>
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QList>
#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace talmo {

/// The dictation key by the desktop portal's global shortcuts, of which the desktop asks the user once. The desktop
/// decides which key it is; Talmo only proposes one.
///
/// Some portals report the press again and again while the key is held, and then no release if a modifier goes up
/// first: once the press has repeated, the end of the repeats ends the hold. Main thread.
class PortalKeys final : public QObject, public EventMonitor {
    Q_OBJECT
public:
    enum class State {
        /// Nobody has been asked: no monitor needs the keys yet.
        Waiting,
        Asking,
        Bound,
        Refused,
    };

    /// A stall of the desktop must not cut a recording.
    static constexpr std::chrono::seconds longestGap{1};
    /// A press this long after the last, without repeats, means that the release was lost.
    static constexpr std::chrono::seconds lostRelease{2};

    struct Options {
        /// An X key symbol.
        quint32 key = 0;
        /// Whether one of Talmo's own windows has the focus.
        std::function<bool()> isApplicationActive;
        std::shared_ptr<Clock> clock;
    };

    /// The first of the keys (X key symbols) that can be proposed; Pause if none can. Portals lose the release of
    /// modifiers.
    static quint32 usableKey(const QList<quint32> &keySymbols);
    /// Whether the portal has global shortcuts. Waits for a second at most.
    static bool isOffered(const QDBusConnection &bus);

    PortalKeys(Options options, QDBusConnection bus);
    ~PortalKeys() override;
    PortalKeys(const PortalKeys &) = delete;
    PortalKeys &operator=(const PortalKeys &) = delete;

    State state() const { return m_state; }
    /// As the desktop describes the key that the user has chosen; empty if it does not say.
    QString trigger() const { return m_trigger; }
    void setOnStateChanged(std::function<void()> handler) { m_onStateChanged = std::move(handler); }
    /// Asks the user again after a refusal.
    void askAgain();

    /// The first monitor has the user asked.
    std::shared_ptr<EventMonitorToken>
    addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler) override;
    std::shared_ptr<EventMonitorToken>
    addLocalMonitor(quint64 eventMask,
                    std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler) override;

private Q_SLOTS:
    void handleActivated(const QDBusObjectPath &session, const QString &id, qulonglong time,
                         const QVariantMap &options);
    void handleDeactivated(const QDBusObjectPath &session, const QString &id, qulonglong time,
                           const QVariantMap &options);

private: // NOLINT(readability-redundant-access-specifiers): no slots.
    void ask();
    void bind();
    void list();
    bool takeShortcut(const QVariantMap &results);
    void enter(State state);
    void closeSession();
    bool isOurs(const QDBusObjectPath &session, const QString &id) const;
    void report(bool isDown);
    void watchRepeats();
    static QCoro::Task<void> endAfter(QPointer<PortalKeys> self, QFuture<void> gap, std::stop_token isWithdrawn);

    Options m_options;
    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    State m_state = State::Waiting;
    QString m_session;
    QString m_trigger;
    std::function<void()> m_onStateChanged;
    bool m_isHeld = false;
    bool m_hasRepeated = false;
    Instant m_lastPress{};
    std::stop_source m_repeats;
    KeyMonitors m_monitors;
};

} // namespace talmo
