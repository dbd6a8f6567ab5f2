#pragma once

#include "App/Services/PipelineServices.h"
#include "App/TalmoState.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace talmo {

struct ViewContext;

enum class MenuAction {
    None,
    BeginDictation,
    EndDictation,
    GrantPermissions,
    GetBetterRecognition,
    CopyLastDictation,
    PutEarlierClipboardBack,
    Pause,
    Resume,
    OpenSettings,
    ShowRecogniser,
    ShowDetails,
    Quit
};

struct MenuEntry {
    QString symbol;
    QString title;
    /// A hint at the end of the row, such as a shortcut.
    QString hint;
    MenuAction action = MenuAction::None;

    bool operator==(const MenuEntry &) const = default;
};

/// The texts of the menu, shared by the panel and the plain menu.
struct MenuContents {
    QString title;
    QString subtitle;
    /// In the plain menu, below a title that is too long for it; empty below any other.
    MenuEntry details;
    /// One per missing permission; if there are any, `grant` is offered.
    QStringList warnings;
    MenuEntry grant;
    /// Better recognition, or its installation; empty if there is neither.
    MenuEntry offer;
    /// What would be installed, or how far it is.
    QString offerDetail;
    MenuEntry mainRow;
    /// Commands that recover lost content; only in the plain menu.
    QList<MenuEntry> recovery;
    /// Pauses the key or resumes it; no title if that is not offered. The panel has it only while the key is paused.
    MenuEntry pause;
    MenuEntry settings;
    MenuEntry quit;

    bool operator==(const MenuContents &) const = default;

    /// The title for a tool tip, escaped if Qt would take it for rich text.
    QString toolTip() const;
    /// The title for the plain menu, whose entries have one line each.
    QString briefTitle() const;

    static MenuContents make(const TalmoState &state, SimpleStatus microphone, SimpleStatus speechRecognition,
                             bool isAccessibilityGranted, const QString &hotkeyDisplayName);
    static MenuContents make(const ViewContext &context);
};

/// The menu bar symbol; each state has a distinct shape. `isPaused` shows while nothing else is going on.
QString menuBarSymbol(const TalmoState &state, bool isPaused = false);

} // namespace talmo
