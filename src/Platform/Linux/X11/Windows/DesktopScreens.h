#pragma once

#include "UI/Overlay/ScreenSource.h"

namespace talmo {

/// The screens as the X server has them, less what the windows of bars and docks ask to be kept free.
class DesktopScreens final : public ScreenSource {
public:
    DesktopScreens();

    QList<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;
    QPoint mouseLocation() const override;
};

} // namespace talmo
