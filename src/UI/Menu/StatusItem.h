#pragma once

#include "UI/Menu/MenuContents.h"

#include <QRect>
#include <QString>

#include <functional>
#include <optional>

namespace talmo {

/// The icon in the desktop's menu bar, tray or panel. Main thread. If the desktop has no place for one yet, nothing is
/// shown until it does.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    /// A name for Symbol, drawn in a colour that suits the surroundings.
    virtual void setSymbol(const QString &symbol) = 0;
    /// The plain menu, for desktops that show only that; its title is the icon's tool tip.
    virtual void setMenu(const MenuContents &contents) = 0;
    /// Called when the icon is clicked, with its position if known.
    virtual void setOnActivated(std::function<void(std::optional<QRect> place)> callback) = 0;
    /// Called when an entry of the plain menu is chosen.
    virtual void setOnChosen(std::function<void(MenuAction)> callback) = 0;
    /// Whether the desktop has a place for it.
    virtual bool isShown() const = 0;
    /// Closes the plain menu if it is open.
    virtual void closeMenu() = 0;
};

} // namespace talmo
