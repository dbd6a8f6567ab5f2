#pragma once

#include "UI/Menu/MenuContents.h"

#include <QRect>
#include <QString>

#include <functional>
#include <optional>

namespace talmo {

/// The icon in the menu bar, tray or panel of the desktop. Main thread. It may be that there is no place for one yet,
/// or never: then nothing is shown until there is.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    /// A name for Symbol, drawn in the colour that fits where it is shown.
    virtual void setSymbol(const QString &symbol) = 0;
    /// What the plain menu says, for desktops that show only that; its title is the icon's tooltip.
    virtual void setMenu(const MenuContents &contents) = 0;
    /// The icon was clicked. Where it is, if that can be known.
    virtual void setOnActivated(std::function<void(std::optional<QRect> place)> callback) = 0;
    /// Something was chosen in the plain menu.
    virtual void setOnChosen(std::function<void(MenuAction)> callback) = 0;
    /// Closes the plain menu if it is open.
    virtual void closeMenu() = 0;
};

} // namespace talmo
