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
    CopyLastDictation,
    PutEarlierClipboardBack,
    OpenSettings,
    Quit
};

struct MenuEntry {
    QString symbol;
    QString title;
    /// A hint at the other end of the row, such as a shortcut.
    QString hint;
    MenuAction action = MenuAction::None;

    bool operator==(const MenuEntry &) const = default;
};

/// What the menu says, worded for people: the panel and the plain menu say the same about the state.
struct MenuContents {
    QString title;
    QString subtitle;
    /// One for each missing permission; when there are any, `grant` is offered.
    QStringList warnings;
    MenuEntry grant;
    MenuEntry mainRow;
    /// What can be got back; in the plain menu alone.
    QList<MenuEntry> recovery;
    MenuEntry settings;
    MenuEntry quit;

    bool operator==(const MenuContents &) const = default;

    /// The title for a tool tip, which would take markup in it for formatting.
    QString toolTip() const;

    static MenuContents make(const TalmoState &state, SimpleStatus microphone, SimpleStatus speechRecognition,
                             bool isAccessibilityGranted, const QString &hotkeyDisplayName);
    static MenuContents make(const ViewContext &context);
};

/// The symbol in the menu bar: each state has a shape of its own.
QString menuBarSymbol(const TalmoState &state);

} // namespace talmo
