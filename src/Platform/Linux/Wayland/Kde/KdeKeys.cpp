#include "Platform/Linux/Wayland/Kde/KdeKeys.h"

#include "Base/Log.h"
#include "UI/Style/Wording.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

#include <xkbcommon/xkbcommon-keysyms.h>

#include <chrono>
#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;

const QString serviceName = QStringLiteral("org.kde.kglobalaccel");
const QString objectPath = QStringLiteral("/kglobalaccel");
const QString interfaceName = QStringLiteral("org.kde.KGlobalAccel");
const QString signalInterface = QStringLiteral("org.kde.kglobalaccel.Component");

const QString component = QStringLiteral("talmo");
const QString action = QStringLiteral("dictate");

constexpr std::chrono::milliseconds answerTime = 1s;

/// In force at once; and Talmo's own settings say which key it is, not what KDE remembers of an earlier one.
constexpr uint setPresent = 2;
constexpr uint noAutoloading = 4;

/// Component, action, and how the user sees both in the desktop's settings.
QStringList actionId()
{
    return {component, action, QStringLiteral("Talmo"), Wording::text(QT_TRANSLATE_NOOP("Talmo", "Hold to dictate"))};
}

/// Qt's code of a key that can be a shortcut by itself.
std::optional<int> qtKey(quint32 keySymbol)
{
    switch (keySymbol) {
    case XKB_KEY_Pause:
        return Qt::Key_Pause;
    case XKB_KEY_Scroll_Lock:
        return Qt::Key_ScrollLock;
    case XKB_KEY_Menu:
        return Qt::Key_Menu;
    case XKB_KEY_Print:
        return Qt::Key_Print;
    case XKB_KEY_Insert:
        return Qt::Key_Insert;
    default:
        break;
    }
    // From F13 on, the usual layouts give the keys other symbols, which KDE sees instead.
    return keySymbol >= XKB_KEY_F1 && keySymbol <= XKB_KEY_F12
               ? std::optional(static_cast<int>(Qt::Key_F1) + static_cast<int>(keySymbol - XKB_KEY_F1))
               : std::nullopt;
}

} // namespace

quint32 KdeKeys::usableKey(const QList<quint32> &keySymbols)
{
    for (const auto symbol : keySymbols) {
        if (qtKey(symbol)) {
            return symbol;
        }
    }
    return XKB_KEY_Pause;
}

std::shared_ptr<KdeKeys> KdeKeys::open(quint32 keySymbol, std::function<bool()> isApplicationActive,
                                       QDBusConnection bus)
{
    const auto key = qtKey(keySymbol);
    if (!key || !bus.isConnected() || !bus.interface()->isServiceRegistered(serviceName)) {
        return nullptr;
    }
    return std::shared_ptr<KdeKeys>(new KdeKeys(*key, std::move(isApplicationActive), std::move(bus)));
}

KdeKeys::KdeKeys(int key, std::function<bool()> isApplicationActive, QDBusConnection bus)
    : m_key(key),
      m_isApplicationActive(std::move(isApplicationActive)),
      m_bus(std::move(bus)),
      m_watcher(serviceName, m_bus)
{
    m_bus.connect(serviceName, {}, signalInterface, QStringLiteral("globalShortcutPressed"), this,
                  SLOT(handlePress(QString, QString, qlonglong)));
    m_bus.connect(serviceName, {}, signalInterface, QStringLiteral("globalShortcutReleased"), this,
                  SLOT(handleRelease(QString, QString, qlonglong)));
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { report(false); });
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] { takeKey(); });
    takeKey();
    if (m_hasKey) {
        m_guard = std::make_unique<KdeKeyGuard>(QStringList{component, action, component, action});
    }
}

KdeKeys::~KdeKeys()
{
    auto message =
        QDBusMessage::createMethodCall(serviceName, objectPath, interfaceName, QStringLiteral("setInactive"));
    message.setArguments({actionId()});
    message.setAutoStartService(false);
    m_bus.send(message);
}

void KdeKeys::takeKey()
{
    const auto call = [this](const QString &method, const QVariantList &arguments) {
        auto message = QDBusMessage::createMethodCall(serviceName, objectPath, interfaceName, method);
        message.setArguments(arguments);
        return m_bus.call(message, QDBus::Block, static_cast<int>(answerTime.count()));
    };
    call(QStringLiteral("doRegister"), {actionId()});
    const QDBusReply<QList<int>> taken =
        call(QStringLiteral("setShortcut"),
             {actionId(), QVariant::fromValue(QList<int>{m_key}), setPresent | noAutoloading});
    m_hasKey = taken.isValid() && taken.value().contains(m_key);
    if (!taken.isValid()) {
        generalLog().error("KDE's shortcut service: %@", {taken.error().message()});
    }
}

std::shared_ptr<EventMonitorToken> KdeKeys::addGlobalMonitor(quint64 eventMask,
                                                             std::function<void(const FlagsChangedEvent &)> handler)
{
    return m_monitors.addGlobal(eventMask, std::move(handler));
}

std::shared_ptr<EventMonitorToken>
KdeKeys::addLocalMonitor(quint64 eventMask,
                         std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler)
{
    return m_monitors.addLocal(eventMask, std::move(handler));
}

void KdeKeys::handlePress(const QString &ofComponent, const QString &ofAction, qlonglong)
{
    if (ofComponent == component && ofAction == action) {
        report(true);
    }
}

void KdeKeys::handleRelease(const QString &ofComponent, const QString &ofAction, qlonglong)
{
    if (ofComponent == component && ofAction == action) {
        report(false);
    }
}

/// Presses repeat while the key is held.
void KdeKeys::report(bool isDown)
{
    if (std::exchange(m_isHeld, isDown) != isDown) {
        m_monitors.report(isDown, m_isApplicationActive());
    }
}

} // namespace talmo
