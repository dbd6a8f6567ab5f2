#pragma once

#include "App/ApplicationShell.h"
#include "Base/Clock.h"
#include "Input/Hotkey/CancelKey.h"
#include "Input/Hotkey/EventMonitor.h"
#include "Input/Hotkey/HotkeyControl.h"
#include "Input/Permissions/InputTrust.h"
#include "Insertion/CursorWatch.h"
#include "Insertion/FocusedField.h"
#include "Insertion/KeyEventPoster.h"
#include "Insertion/PasteReceipt.h"
#include "Insertion/Pasteboard.h"
#include "Insertion/TextCommitter.h"
#include "Settings/DesktopExtension.h"
#include "Settings/PastePermission.h"
#include "Settings/UserDefaults.h"
#include "UI/Menu/FrontmostFocus.h"
#include "UI/Menu/StatusItem.h"
#include "UI/Overlay/PanelWindow.h"
#include "UI/Overlay/ScreenSource.h"

#include <QFuture>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace talmo {

/// Something that Talmo cannot do on a desktop. Source texts, to be looked up through Wording.
struct DesktopLimit {
    const char *name;
    const char *sentence;
    /// What the user can do about it.
    const char *remedy;
};

/// Everything that a desktop session provides to Talmo. Each port follows the thread rules of its own header.
struct Desktop {
    /// For logs and bug reports, such as "X11".
    QString description;
    QList<DesktopLimit> limits;
    /// The key to hold, as users know it.
    QString hotkeyName;
    std::shared_ptr<EventMonitor> eventMonitor;
    std::shared_ptr<CancelKey> cancelKey;
    /// Null if the keys to hold cannot be chosen here.
    std::shared_ptr<HotkeyControl> hotkeys;
    /// Null if the desktop needs none.
    std::shared_ptr<DesktopExtension> extension;
    /// The key that the desktop reports if it is asked; null if it need not be.
    std::shared_ptr<DesktopExtension> desktopKey;
    /// Null if the user need not allow pasting, or cannot.
    std::shared_ptr<PastePermission> pastePermission;
    std::shared_ptr<Pasteboard> pasteboard;
    std::shared_ptr<PasteWitness> pasteWitness;
    std::shared_ptr<KeyEventPoster> keyPoster;
    /// Null if text is pasted.
    std::shared_ptr<TextCommitter> textCommitter;
    std::shared_ptr<InputTrust> inputTrust;
    std::shared_ptr<FocusedField> focusedField;
    std::shared_ptr<CursorWatch> cursorWatch;
    PanelWindowFactory makePanelWindow;
    std::shared_ptr<ScreenSource> screens;
    std::shared_ptr<StatusItem> statusItem;
    std::shared_ptr<FrontmostFocus> focus;
    std::shared_ptr<ApplicationShell> shell;
    /// Keeps the application's palette that of the desktop while it lives.
    std::shared_ptr<QObject> appearance;
    /// Restores the clipboard and passes it on. Nothing can be pasted afterwards. Finishes within three seconds.
    std::function<QFuture<void>()> shutDown;
};

struct DesktopOptions {
    std::shared_ptr<Clock> clock;
    /// Names of the keys to hold; empty for the default ones.
    QStringList hotkeys;
    /// Whether keys may be read from the keyboards' devices.
    bool readsKeyboards = true;
    /// "light" or "dark" overrides the desktop; any other value follows it.
    QString colourScheme;
    /// Called when the user asks the desktop to quit Talmo.
    std::function<void()> quit;
    /// Where the desktop keeps what the user has allowed; null: it asks for nothing.
    std::shared_ptr<UserDefaults> defaults = nullptr;
};

/// Detects the desktop of this session and selects Qt's platform plug-in for it. Call before constructing QApplication.
/// Throws Error with a sentence for users if there is no desktop.
void prepareDesktop();

/// Opens the desktop that prepareDesktop() found. Main thread, with a QApplication. Throws Error.
Desktop openDesktop(const DesktopOptions &options);

} // namespace talmo
