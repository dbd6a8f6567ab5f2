#include "Platform/Linux/Wayland/WaylandDesktop.h"

#include "Base/Log.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/Session/ClipboardNotice.h"
#include "Platform/Linux/Session/UnknownCursor.h"
#include "Platform/Linux/Wayland/Clipboard/WaylandPasteboard.h"
#include "Platform/Linux/Wayland/Kde/KdeKeys.h"
#include "Platform/Linux/Wayland/Keys/NoCancelKey.h"
#include "Platform/Linux/Wayland/Keys/WaylandInputTrust.h"
#include "Platform/Linux/Wayland/Keys/WaylandKeyEventPoster.h"
#include "Platform/Linux/Wayland/Sway/SwayEventMonitor.h"
#include "Platform/Linux/Wayland/Windows/LayerPanelWindow.h"
#include "Platform/Linux/Wayland/Windows/LayerSurface.h"
#include "Platform/Linux/Wayland/Windows/WaylandFocusedField.h"

#include <QGuiApplication>

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <utility>

namespace talmo {

namespace {

/// sway reports no release of a modifier if another key goes down in between.
constexpr const char *defaultKeyOnSway = "Pause";

const DesktopLimit takenKey = {
    QT_TRANSLATE_NOOP("Talmo", "Dictation key"),
    QT_TRANSLATE_NOOP("Talmo", "Another program's shortcut is the dictation key already."),
    QT_TRANSLATE_NOOP("Talmo", "Remove that shortcut in System Settings, then start Talmo again.")};

bool isTalmoActive()
{
    return QGuiApplication::focusWindow() != nullptr;
}

void note(Desktop &desktop, const DesktopLimit &limit)
{
    generalLog().info("%s: %s", {QString::fromUtf8(limit.name), QString::fromUtf8(limit.sentence)});
    desktop.limits.append(limit);
}

/// The keys of X are only seen while one of its windows is in front.
void useKeysOnly(Desktop &desktop, std::shared_ptr<EventMonitor> monitor, quint32 key)
{
    desktop.hotkeyName = keyDisplayName(key);
    desktop.eventMonitor = std::move(monitor);
    desktop.cancelKey = std::make_shared<NoCancelKey>();
    desktop.hotkeys.reset(); // It would grab keys of X, which other windows do not have.
}

bool useKdeKeys(Desktop &desktop, const DesktopOptions &options)
{
    const auto key = KdeKeys::usableKey(triggerKeySymbols(options.hotkeys));
    const auto keys = KdeKeys::open(key, &isTalmoActive);
    if (!keys) {
        return false;
    }
    useKeysOnly(desktop, keys, key);
    if (!keys->hasKey()) {
        note(desktop, takenKey);
    }
    return true;
}

bool useSwayKeys(Desktop &desktop, const DesktopOptions &options)
{
    auto ipc = SwayIpc::open();
    if (!ipc) {
        return false;
    }
    const auto key = triggerKeySymbols(options.hotkeys.isEmpty() ? QStringList{QString::fromLatin1(defaultKeyOnSway)}
                                                                 : options.hotkeys)
                         .constFirst();
    std::array<char, 64> name{};
    xkb_keysym_get_name(key, name.data(), name.size());
    useKeysOnly(desktop,
                std::make_shared<SwayEventMonitor>(std::move(ipc), QString::fromLatin1(name.data()), &isTalmoActive),
                key);
    return true;
}

/// Whether the user's keys are known, whatever window is in front.
bool useKeys(Desktop &desktop, const DesktopOptions &options)
{
    return useSwayKeys(desktop, options) || useKdeKeys(desktop, options);
}

/// Whether text reaches every window.
bool usePasting(Desktop &desktop, const std::shared_ptr<WaylandSession> &session)
{
    const auto pasteboard = std::make_shared<WaylandPasteboard>(session);
    pasteboard->setOnLoss([](OfferReading::Loss loss) { showClipboardLoss(loss == OfferReading::Loss::TooLarge); });
    const auto poster = std::make_shared<WaylandKeyEventPoster>(session, pasteboard->transaction());
    desktop.pasteboard = pasteboard;
    desktop.pasteWitness = pasteboard;
    desktop.keyPoster = poster;
    desktop.inputTrust = std::make_shared<WaylandInputTrust>();
    desktop.focusedField = std::make_shared<WaylandFocusedField>();
    desktop.cursorWatch = std::make_shared<UnknownCursor>();
    desktop.shutDown = [pasteboard] { return pasteboard->shutDown(); };
    return poster->hasKeyboard();
}

const DesktopLimit unseenKeys = {
    QT_TRANSLATE_NOOP("Talmo", "Dictation key"),
    QT_TRANSLATE_NOOP("Talmo", "This desktop may not tell Talmo about keys while a Wayland window is in front."),
    QT_TRANSLATE_NOOP("Talmo", "Bind a key to “talmoctl toggle” in the desktop's keyboard settings.")};
const DesktopLimit untypedText = {
    QT_TRANSLATE_NOOP("Talmo", "Inserting text"),
    QT_TRANSLATE_NOOP("Talmo", "This desktop does not let Talmo type into Wayland windows."),
    QT_TRANSLATE_NOOP("Talmo", "After a dictation, paste the text with Ctrl+V.")};

} // namespace

void useWayland(Desktop &desktop, const std::shared_ptr<WaylandSession> &session, const DesktopOptions &options)
{
    const QByteArray clipboard = DataControl::offeredInterface(*session);
    desktop.description = QStringLiteral("Wayland, ") +
                          (clipboard.isEmpty() ? QStringLiteral("clipboard of X") : QString::fromUtf8(clipboard));
    generalLog().info("desktop: %s", {desktop.description});
    if (LayerSurface::isOffered(*session)) {
        // Menus stay windows of X: they take the keyboard.
        desktop.makePanelWindow = [session, makeMenu = desktop.makePanelWindow](
                                      const PanelOptions &panel, QWidget *content) -> std::unique_ptr<PanelWindow> {
            return panel.canBecomeKey ? makeMenu(panel, content)
                                      : std::make_unique<LayerPanelWindow>(session, panel, content);
        };
    }
    if (!useKeys(desktop, options)) {
        note(desktop, unseenKeys);
    }
    if (clipboard.isEmpty() || !usePasting(desktop, session)) {
        note(desktop, untypedText);
    }
}

} // namespace talmo
