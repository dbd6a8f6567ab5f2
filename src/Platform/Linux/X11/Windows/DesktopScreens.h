#pragma once

#include "UI/Overlay/ScreenSource.h"

namespace talmo {

/// The X server's screens, without the areas that bars and docks reserve.
class DesktopScreens final : public ScreenSource {
public:
    DesktopScreens();

    QList<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;
    QPoint mouseLocation() const override;
};

} // namespace talmo
