#include "Platform/Linux/Wayland/Portal/PortalKeys.h"

#include "Base/CancellableWait.h"
#include "Base/Log.h"
#include "Base/Task.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/Wayland/Portal/PortalShortcut.h"
#include "UI/Style/Wording.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <utility>

namespace talmo {

namespace {

using Outcome = PortalRequest::Outcome;

const QString interfaceName = QStringLiteral("GlobalShortcuts");
const QString shortcutId = QStringLiteral("dictate");

} // namespace

quint32 PortalKeys::usableKey(const QList<quint32> &keySymbols)
{
    for (const auto symbol : keySymbols) {
        if (!isModifierKey(symbol) && symbol != XKB_KEY_XF86WakeUp && !functionKeyCode(symbol)) {
            return symbol;
        }
    }
    return XKB_KEY_Pause;
}

bool PortalKeys::isOffered(const QDBusConnection &bus)
{
    return PortalRequest::versionOf(bus, interfaceName) > 0;
}

PortalKeys::PortalKeys(Options options, QDBusConnection bus)
    : m_options(std::move(options)),
      m_bus(std::move(bus)),
      m_watcher(PortalRequest::service(), m_bus)
{
    PortalShortcut::registerType();
    qRegisterMetaType<QDBusObjectPath>(); // connect() refuses slots whose types have not been used yet.
    const auto follow = [this](const QString &signal, const char *slot) {
        m_bus.connect(PortalRequest::service(), PortalRequest::path(), PortalRequest::fullName(interfaceName), signal,
                      this, slot);
    };
    follow(QStringLiteral("Activated"), SLOT(handleActivated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
    follow(QStringLiteral("Deactivated"), SLOT(handleDeactivated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        m_session.clear();
        report(false);
    });
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        if (m_state == State::Bound) {
            ask(); // The portal remembers what the user has allowed.
        }
    });
}

PortalKeys::~PortalKeys()
{
    m_repeats.request_stop();
    closeSession();
}

void PortalKeys::closeSession()
{
    if (!m_session.isEmpty()) {
        PortalRequest::call(m_bus, std::exchange(m_session, {}), QStringLiteral("Session"), QStringLiteral("Close"),
                            {});
    }
}

void PortalKeys::askAgain()
{
    if (m_state == State::Refused) {
        ask();
    }
}

void PortalKeys::ask()
{
    closeSession();
    enter(State::Asking);
    PortalRequest::send(m_bus, interfaceName, QStringLiteral("CreateSession"), {},
                        {{QStringLiteral("session_handle_token"), PortalRequest::newToken()}}, this,
                        [this](Outcome outcome, const QVariantMap &results) {
                            m_session = PortalRequest::sessionIn(results);
                            if (outcome == Outcome::Done && !m_session.isEmpty()) {
                                bind();
                            } else {
                                enter(State::Refused);
                            }
                        });
}

void PortalKeys::bind()
{
    const QString description = Wording::text(QT_TRANSLATE_NOOP("Talmo", "Hold to dictate"));
    const QList<PortalShortcut> shortcuts{{shortcutId,
                                           {{QStringLiteral("description"), description},
                                            {QStringLiteral("preferred_trigger"), keyName(m_options.key)}}}};
    const QString noParentWindow;
    PortalRequest::send(
        m_bus, interfaceName, QStringLiteral("BindShortcuts"),
        {QVariant::fromValue(QDBusObjectPath(m_session)), QVariant::fromValue(shortcuts), noParentWindow}, {}, this,
        [this](Outcome outcome, const QVariantMap &results) {
            if (outcome == Outcome::Refused) {
                enter(State::Refused);
            } else if (!takeShortcut(results)) {
                list(); // GNOME 48 calls a success a failure.
            }
        });
}

void PortalKeys::list()
{
    PortalRequest::send(m_bus, interfaceName, QStringLiteral("ListShortcuts"),
                        {QVariant::fromValue(QDBusObjectPath(m_session))}, {}, this,
                        [this](Outcome /*outcome*/, const QVariantMap &results) {
                            if (!takeShortcut(results)) {
                                enter(State::Refused);
                            }
                        });
}

bool PortalKeys::takeShortcut(const QVariantMap &results)
{
    for (const auto &shortcut : PortalShortcut::listIn(results)) {
        if (shortcut.id == shortcutId) {
            m_trigger = shortcut.properties.value(QStringLiteral("trigger_description")).toString();
            enter(State::Bound);
            return true;
        }
    }
    return false;
}

void PortalKeys::enter(State state)
{
    m_state = state;
    if (state == State::Refused) {
        closeSession();
    }
    if (m_onStateChanged) {
        m_onStateChanged();
    }
}

std::shared_ptr<EventMonitorToken> PortalKeys::addGlobalMonitor(quint64 eventMask,
                                                                std::function<void(const FlagsChangedEvent &)> handler)
{
    if (m_state == State::Waiting) {
        ask();
    }
    return m_monitors.addGlobal(eventMask, std::move(handler));
}

std::shared_ptr<EventMonitorToken>
PortalKeys::addLocalMonitor(quint64 eventMask,
                            std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler)
{
    return m_monitors.addLocal(eventMask, std::move(handler));
}

bool PortalKeys::isOurs(const QDBusObjectPath &session, const QString &id) const
{
    return !m_session.isEmpty() && session.path() == m_session && id == shortcutId;
}

void PortalKeys::handleActivated(const QDBusObjectPath &session, const QString &id, qulonglong /*time*/,
                                 const QVariantMap & /*options*/)
{
    if (!isOurs(session, id)) {
        return;
    }
    const auto now = m_options.clock->now();
    const auto gap = now - std::exchange(m_lastPress, now);
    if (m_isHeld && !m_hasRepeated && gap > lostRelease) {
        report(false);
    }
    if (m_isHeld) {
        m_hasRepeated = true;
        watchRepeats();
    } else {
        report(true);
    }
}

void PortalKeys::handleDeactivated(const QDBusObjectPath &session, const QString &id, qulonglong /*time*/,
                                   const QVariantMap & /*options*/)
{
    if (isOurs(session, id)) {
        report(false);
    }
}

void PortalKeys::report(bool isDown)
{
    if (std::exchange(m_isHeld, isDown) == isDown) {
        return;
    }
    m_hasRepeated = false;
    m_repeats.request_stop();
    m_monitors.report(isDown, m_options.isApplicationActive());
}

void PortalKeys::watchRepeats()
{
    m_repeats.request_stop();
    m_repeats = {};
    const auto token = m_repeats.get_token();
    logEscapes(endAfter(this, m_options.clock->sleep(longestGap, token), token));
}

QCoro::Task<void> PortalKeys::endAfter(QPointer<PortalKeys> self, QFuture<void> gap, std::stop_token isWithdrawn)
{
    const bool isOver = co_await hasElapsed(gap);
    if (isOver && self && !isWithdrawn.stop_requested()) {
        self->report(false);
    }
}

} // namespace talmo
