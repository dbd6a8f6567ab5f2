#include "Platform/Linux/Wayland/Portal/PortalDesktop.h"

#include "Platform/Linux/Wayland/Clipboard/DataControl.h"
#include "Platform/Linux/Wayland/Keys/ChordKeyboard.h"
#include "Platform/Linux/Wayland/Portal/LentKeyboardPaster.h"
#include "Platform/Linux/Wayland/Portal/LentKeyboardPermission.h"
#include "Platform/Linux/Wayland/Portal/MutterKeyboard.h"
#include "Platform/Linux/Wayland/Portal/PortalKeyboard.h"

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

} // namespace talmo
