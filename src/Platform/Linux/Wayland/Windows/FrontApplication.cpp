#include "Platform/Linux/Wayland/Windows/FrontApplication.h"

#include "Platform/Linux/Wayland/Windows/ForeignToplevels.h"
#include "Platform/Linux/Wayland/Windows/PlasmaWindows.h"

#include <memory>

namespace talmo {

FrontSource openFrontSource(WaylandSession &session)
{
    if (PlasmaWindows::isOffered(session)) {
        const auto windows = std::make_shared<PlasmaWindows>(session);
        return [windows] { return windows->front(); };
    }
    const auto windows = std::make_shared<ForeignToplevels>(session);
    return [windows] { return windows->front(); };
}

} // namespace talmo
