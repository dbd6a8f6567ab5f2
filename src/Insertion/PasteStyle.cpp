#include "Insertion/PasteStyle.h"

#include <QtGlobal>

#include <algorithm>
#include <array>

namespace talmo {

namespace {

template <std::size_t Size>
bool isOneOf(const std::array<const char *, Size> &names, const QString &name)
{
    return std::any_of(names.begin(), names.end(), [&name](const char *known) {
        return name.compare(QLatin1String(known), Qt::CaseInsensitive) == 0;
    });
}

constexpr std::array vteLikeTerminals = {"gnome-terminal",
                                         "gnome-terminal-server",
                                         "xfce4-terminal",
                                         "mate-terminal",
                                         "lxterminal",
                                         "terminator",
                                         "tilix",
                                         "tilda",
                                         "guake",
                                         "sakura",
                                         "roxterm",
                                         "termit",
                                         "konsole",
                                         "yakuake",
                                         "qterminal",
                                         "deepin-terminal",
                                         "kitty",
                                         "alacritty",
                                         "org.wezfurlong.wezterm",
                                         "wezterm",
                                         "foot",
                                         "footclient",
                                         "st",
                                         "st-256color",
                                         "stterm",
                                         "terminology",
                                         "kgx",
                                         "org.gnome.console",
                                         "org.gnome.terminal",
                                         "org.gnome.ptyxis",
                                         "ptyxis",
                                         "com.mitchellh.ghostty",
                                         "ghostty",
                                         "hyper",
                                         "tabby",
                                         "contour",
                                         "rio",
                                         "warp",
                                         "blackbox",
                                         "com.raggesilver.blackbox",
                                         "cool-retro-term",
                                         "io.elementary.terminal"};

constexpr std::array oldTerminals = {"xterm",        "uxterm", "koi8rxterm", "lxterm", "urxvt", "rxvt",
                                     "rxvt-unicode", "aterm",  "eterm",      "mlterm", "mrxvt"};

constexpr std::array shiftInsertPrograms = {"emacs"};

constexpr std::array importers = {"virtualbox machine",
                                  "virtualboxvm",
                                  "virt-viewer",
                                  "remote-viewer",
                                  "virt-manager",
                                  "spicy",
                                  "vmware",
                                  "vncviewer",
                                  "remmina",
                                  "org.remmina.remmina",
                                  "xfreerdp",
                                  "krdc",
                                  "vinagre",
                                  "x2goclient",
                                  "nxplayer.bin"};

} // namespace

PasteStyle pasteStyleFor(const QString &instanceName, const QString &className)
{
    for (const QString &name : {className, instanceName}) {
        if (isOneOf(vteLikeTerminals, name)) {
            return PasteStyle::ControlShiftV;
        }
        if (isOneOf(oldTerminals, name)) {
            return PasteStyle::ShiftInsertPrimary;
        }
        if (isOneOf(shiftInsertPrograms, name)) {
            return PasteStyle::ShiftInsert;
        }
    }
    return PasteStyle::ControlV;
}

QString shortcutName(PasteStyle style)
{
    switch (style) {
    case PasteStyle::ControlShiftV:
        return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Ctrl+Shift+V"));
    case PasteStyle::ShiftInsertPrimary:
    case PasteStyle::ShiftInsert:
        return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Shift+Insert"));
    case PasteStyle::ControlV:
        break;
    }
    return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Ctrl+V"));
}

QStringList shortcutNames()
{
    return {shortcutName(PasteStyle::ControlV), shortcutName(PasteStyle::ControlShiftV),
            shortcutName(PasteStyle::ShiftInsert)};
}

bool importsClipboard(const QString &instanceName, const QString &className)
{
    return isOneOf(importers, className) || isOneOf(importers, instanceName) ||
           className.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive);
}

} // namespace talmo
