#include "UI/Overlay/ScreenSource.h"

namespace talmo {

std::optional<Screen> screenUnderPointer(const ScreenSource &source)
{
    const QPoint pointer = source.mouseLocation();
    for (const auto &screen : source.screens()) {
        if (screen.frame.contains(pointer)) {
            return screen;
        }
    }
    return source.mainScreen();
}

} // namespace talmo
