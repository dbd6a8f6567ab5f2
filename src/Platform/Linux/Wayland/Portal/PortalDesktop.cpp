#include "Platform/Linux/Wayland/Portal/PortalDesktop.h"

#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/Wayland/Clipboard/DataControl.h"
#include "Platform/Linux/Wayland/Keys/ChordKeyboard.h"
#include "Platform/Linux/Wayland/Keys/NoCancelKey.h"
#include "Platform/Linux/Wayland/Portal/LentKeyboardPaster.h"
#include "Platform/Linux/Wayland/Portal/LentKeyboardPermission.h"
#include "Platform/Linux/Wayland/Portal/MutterKeyboard.h"
#include "Platform/Linux/Wayland/Portal/PortalKeyboard.h"
#include "Platform/Linux/Wayland/Portal/PortalKeys.h"
#include "Platform/Linux/Wayland/Portal/PortalKeysStatus.h"
#include "Platform/Linux/Wayland/WaylandLimits.h"

#include <QGuiApplication>

namespace talmo {

namespace {

std::shared_ptr<LentKeyboard> openLentKeyboard(const DesktopOptions &options)
{
    const auto defaults = options.defaults;
    const auto portal = PortalRequest::connectToPortal();
    if (PortalKeyboard::isOffered(portal)) {
        const QString key = LentKeyboardPermission::tokenKey();
        return std::make_shared<PortalKeyboard>(
            portal,
            PortalKeyboard::TokenStore{[defaults, key] { return defaults->string(key).value_or(QString()); },
                                       [defaults, key](const QString &token) { defaults->set(key, token); }},
            options.clock);
    }
    const auto bus = QDBusConnection::sessionBus();
    return MutterKeyboard::isOffered(bus) ? std::make_shared<MutterKeyboard>(bus) : nullptr;
}

bool isUnseen(const Desktop &desktop)
{
    for (const auto &limit : desktop.limits) {
        if (limit.sentence == WaylandLimits::unseenKeys.sentence) {
            return true;
        }
    }
    return false;
}

} // namespace

LentPasting openLentPasting(const WaylandSession &session, const std::shared_ptr<ShellPaster> &better,
                            const DesktopOptions &options)
{
    const bool canPaste = !DataControl::offeredInterface(session).isEmpty() && ChordKeyboard::isOffered(session);
    const auto keyboard = canPaste || !options.defaults ? nullptr : openLentKeyboard(options);
    if (!keyboard) {
        return {better, nullptr};
    }
    const auto paster = std::make_shared<LentKeyboardPaster>(keyboard, better);
    return {paster, std::make_shared<LentKeyboardPermission>(options.defaults, keyboard, paster)};
}

void usePortalKeys(Desktop &desktop, const DesktopOptions &options)
{
    const auto bus = isUnseen(desktop) ? PortalRequest::connectToPortal() : QDBusConnection(QString());
    if (!PortalKeys::isOffered(bus)) {
        return;
    }
    const auto key = PortalKeys::usableKey(triggerKeySymbols(options.hotkeys));
    const auto keys = std::make_shared<PortalKeys>(
        PortalKeys::Options{key, [] { return QGuiApplication::focusWindow() != nullptr; }, options.clock}, bus);
    desktop.eventMonitor = keys;
    desktop.cancelKey = std::make_shared<NoCancelKey>();
    desktop.hotkeys.reset();
    desktop.desktopKey = std::make_shared<PortalKeysStatus>(keys);
    desktop.hotkeyName = keyDisplayName(key);
    desktop.description += QStringLiteral(", portal shortcuts");
    desktop.limits.removeIf(
        [](const DesktopLimit &limit) { return limit.sentence == WaylandLimits::unseenKeys.sentence; });
}

} // namespace talmo
