#include "Platform/Linux/X11/X11Desktop.h"

#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/Session/ClipboardNotice.h"
#include "Platform/Linux/Session/DesktopAppearance.h"
#include "Platform/Linux/Session/TrayIcon.h"
#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"
#include "Platform/Linux/X11/Keys/XCancelKey.h"
#include "Platform/Linux/X11/Keys/XCursorWatch.h"
#include "Platform/Linux/X11/Keys/XHotkeyControl.h"
#include "Platform/Linux/X11/Keys/XInput2EventMonitor.h"
#include "Platform/Linux/X11/Keys/XInputTrust.h"
#include "Platform/Linux/X11/Keys/XTestKeyEventPoster.h"
#include "Platform/Linux/X11/Windows/AtSpiFocusedField.h"
#include "Platform/Linux/X11/Windows/DesktopScreens.h"
#include "Platform/Linux/X11/Windows/EmbeddedTray.h"
#include "Platform/Linux/X11/Windows/X11ApplicationShell.h"
#include "Platform/Linux/X11/Windows/X11PanelWindow.h"
#include "Platform/Linux/X11/Windows/XFrontmostFocus.h"
#include "Platform/Linux/X11/Windows/XSettings.h"
#include "Platform/Linux/X11/XConnection.h"
#include "Platform/Linux/X11/XSession.h"

#include <QGuiApplication>

#include <utility>

namespace talmo {

namespace {

bool isApplicationActive()
{
    return QGuiApplication::focusWindow() != nullptr;
}

} // namespace

void requireX11()
{
    const XConnection probe;
}

Desktop openX11Desktop(const DesktopOptions &options, bool isNested, const std::shared_ptr<ShellPaster> &shell)
{
    const auto session = XSession::open(isNested);
    const auto keys = triggerKeySymbols(options.hotkeys);
    const auto monitor = std::make_shared<XInput2EventMonitor>(session->postedKeys(), keys, &isApplicationActive);
    const auto pasteboard = std::make_shared<XcbPasteboard>(session);
    pasteboard->setOnLoss(
        [](SelectionReading::Loss loss) { showClipboardLoss(loss == SelectionReading::Loss::TooLarge); });
    if (shell) {
        pasteboard->transaction()->setPastesPrimaryBeyond(
            [shell] { return shell->isAvailable() && !shell->isFrontKnown(); });
    }
    const auto icon = std::make_shared<TrayIcon>(std::make_shared<EmbeddedTray>());

    Desktop desktop;
    desktop.description = QStringLiteral("X11");
    desktop.hotkeyName = keyDisplayName(keys.first());
    desktop.eventMonitor = monitor;
    desktop.hotkeys = std::make_shared<XHotkeyControl>(monitor, options.hotkeys);
    desktop.cancelKey = std::make_shared<XCancelKey>(monitor);
    desktop.pasteboard = pasteboard;
    desktop.pasteWitness = pasteboard;
    desktop.keyPoster = std::make_shared<XTestKeyEventPoster>(session, pasteboard->transaction(), shell);
    desktop.inputTrust = std::make_shared<XInputTrust>(session, monitor);
    desktop.focusedField = std::make_shared<AtSpiFocusedField>(session);
    desktop.cursorWatch = std::make_shared<XCursorWatch>(monitor);
    desktop.makePanelWindow = &X11PanelWindow::make;
    desktop.screens = std::make_shared<DesktopScreens>();
    desktop.statusItem = icon;
    desktop.focus = std::make_shared<XFrontmostFocus>(options.clock);
    desktop.shell = std::make_shared<X11ApplicationShell>(options.quit);
    desktop.appearance = std::make_shared<DesktopAppearance>(options.colourScheme, std::make_shared<XSettings>(),
                                                             [weak = std::weak_ptr(icon)] {
                                                                 if (const auto shown = weak.lock()) {
                                                                     shown->redraw();
                                                                 }
                                                             });
    desktop.shutDown = [pasteboard] { return pasteboard->shutDown(); };
    return desktop;
}

} // namespace talmo
