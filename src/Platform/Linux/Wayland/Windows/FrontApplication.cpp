#include "Platform/Linux/Wayland/Windows/FrontApplication.h"

#include "Platform/Linux/Wayland/Windows/ForeignToplevels.h"

#include <memory>

namespace talmo {

FrontSource openFrontSource(WaylandSession &session)
{
    const auto windows = std::make_shared<ForeignToplevels>(session);
    return [windows] { return windows->front(); };
}

} // namespace talmo
