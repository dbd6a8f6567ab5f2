#include "Platform/Linux/Wayland/WaylandDesktop.h"

#include "Base/Log.h"
#include "Platform/Linux/Evdev/ActiveTerminal.h"
#include "Platform/Linux/Evdev/EvdevHotkeyControl.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/Session/ClipboardNotice.h"
#include "Platform/Linux/Session/UnknownCursor.h"
#include "Platform/Linux/Wayland/Clipboard/WaylandPasteboard.h"
#include "Platform/Linux/Wayland/Kde/KdeKeys.h"
#include "Platform/Linux/Wayland/Keys/NoCancelKey.h"
#include "Platform/Linux/Wayland/Keys/WaylandInputTrust.h"
#include "Platform/Linux/Wayland/Keys/WaylandKeyEventPoster.h"
#include "Platform/Linux/Wayland/Sway/SwayEventMonitor.h"
#include "Platform/Linux/Wayland/WaylandLimits.h"
#include "Platform/Linux/Wayland/Windows/LayerPanelWindow.h"
#include "Platform/Linux/Wayland/Windows/LayerSurface.h"
#include "Platform/Linux/Wayland/Windows/WaylandFocusedField.h"

#include <QGuiApplication>

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <utility>

namespace talmo {

namespace {

bool isApplicationActive()
{
    return QGuiApplication::focusWindow() != nullptr;
}

/// The keys of X are only seen while one of its windows is in front.
void useKeysOnly(Desktop &desktop, std::shared_ptr<EventMonitor> monitor, quint32 key)
{
    desktop.hotkeyName = keyDisplayName(key);
    desktop.eventMonitor = std::move(monitor);
    desktop.cancelKey = std::make_shared<NoCancelKey>(); // No program can take Escape from the others.
    desktop.hotkeys.reset();                             // It would grab keys of X, which other windows do not have.
}

bool useKeyboards(Desktop &desktop, const DesktopOptions &options)
{
    auto keyboards = options.readsKeyboards ? EvdevKeyboards::open() : nullptr;
    if (!keyboards) {
        return false;
    }
    const auto keys = triggerKeySymbols(options.hotkeys);
    const auto monitor = std::make_shared<EvdevEventMonitor>(
        std::move(keyboards), keys,
        EvdevEventMonitor::Questions{&isApplicationActive, [] { return isOnActiveTerminal(); }});
    desktop.description += QStringLiteral(", keyboard devices");
    useKeysOnly(desktop, monitor, keys.first());
    desktop.hotkeys = std::make_shared<EvdevHotkeyControl>(monitor, options.hotkeys);
    return true;
}

bool useKdeKeys(Desktop &desktop, const DesktopOptions &options)
{
    const auto key = KdeKeys::usableKey(triggerKeySymbols(options.hotkeys));
    const auto keys = KdeKeys::open(key, &isApplicationActive);
    if (!keys) {
        return false;
    }
    useKeysOnly(desktop, keys, key);
    if (!keys->hasKey()) {
        desktop.limits.append(WaylandLimits::takenKey);
    }
    return true;
}

bool useSwayKeys(Desktop &desktop, const DesktopOptions &options)
{
    auto ipc = SwayIpc::open();
    if (!ipc) {
        return false;
    }
    const auto key =
        triggerKeySymbols(options.hotkeys.isEmpty() ? SwayEventMonitor::defaultKeys() : options.hotkeys).constFirst();
    std::array<char, 64> name{};
    xkb_keysym_get_name(key, name.data(), name.size());
    useKeysOnly(
        desktop,
        std::make_shared<SwayEventMonitor>(std::move(ipc), QString::fromLatin1(name.data()), &isApplicationActive),
        key);
    return true;
}

/// Whether the user's keys are known, whatever window is in front.
bool useKeys(Desktop &desktop, const DesktopOptions &options)
{
    return useKeyboards(desktop, options) || useSwayKeys(desktop, options) || useKdeKeys(desktop, options);
}

/// Whether text reaches every window.
bool usePasting(Desktop &desktop, const std::shared_ptr<WaylandSession> &session,
                const std::shared_ptr<ShellPaster> &paster)
{
    const auto pasteboard = std::make_shared<WaylandPasteboard>(session);
    pasteboard->setOnLoss([](OfferReading::Loss loss) { showClipboardLoss(loss == OfferReading::Loss::TooLarge); });
    const auto poster = std::make_shared<WaylandKeyEventPoster>(session, pasteboard->transaction(), paster);
    desktop.pasteboard = pasteboard;
    desktop.pasteWitness = pasteboard;
    desktop.keyPoster = poster;
    desktop.inputTrust = std::make_shared<WaylandInputTrust>();
    desktop.focusedField = std::make_shared<WaylandFocusedField>();
    desktop.cursorWatch = std::make_shared<UnknownCursor>();
    desktop.shutDown = [pasteboard] { return pasteboard->shutDown(); };
    return poster->hasKeyboard();
}

} // namespace

void useWayland(Desktop &desktop, const std::shared_ptr<WaylandSession> &session,
                const std::shared_ptr<ShellPaster> &paster, const DesktopOptions &options)
{
    const QByteArray clipboard = DataControl::offeredInterface(*session);
    desktop.description = QStringLiteral("Wayland, ") +
                          (clipboard.isEmpty() ? QStringLiteral("clipboard of X") : QString::fromUtf8(clipboard));
    if (LayerSurface::isOffered(*session)) {
        // Menus stay windows of X: they take the keyboard.
        desktop.makePanelWindow = [session, makeMenu = desktop.makePanelWindow](
                                      const PanelOptions &panel, QWidget *content) -> std::unique_ptr<PanelWindow> {
            return panel.canBecomeKey ? makeMenu(panel, content)
                                      : std::make_unique<LayerPanelWindow>(session, panel, content);
        };
    }
    const bool hasKeys = useKeys(desktop, options);
    generalLog().info("desktop: %s", {desktop.description});
    if (!hasKeys) {
        desktop.limits.append(WaylandLimits::unseenKeys);
    }
    const bool types = !clipboard.isEmpty() && usePasting(desktop, session, paster);
    if (!types && !(paster && paster->isAvailable())) {
        desktop.limits.append(desktop.pastePermission ? WaylandLimits::unallowedText : WaylandLimits::untypedText);
    }
}

} // namespace talmo
