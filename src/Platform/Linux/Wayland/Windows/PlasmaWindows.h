#pragma once

#include "Platform/Linux/Wayland/WaylandSession.h"
#include "Platform/Linux/Wayland/Windows/FrontApplication.h"

#include <plasma-window-management.h>

#include <map>

namespace talmo {

/// The windows of the session, by KDE's window management, which KWin offers only to programs whose desktop entry asks
/// for it. The session's thread only.
class PlasmaWindows {
public:
    /// Whether the compositor offers it in a version that Talmo knows. Any thread.
    static bool isOffered(const WaylandSession &session);

    explicit PlasmaWindows(WaylandSession &session);
    ~PlasmaWindows();
    PlasmaWindows(const PlasmaWindows &) = delete;
    PlasmaWindows &operator=(const PlasmaWindows &) = delete;

    FrontApplication front() const;

private:
    struct Window {
        QString application;
        bool isActive = false;
    };

    void add(org_kde_plasma_window *window);
    void forget(org_kde_plasma_window *window);

    WaylandSession &m_session;
    org_kde_plasma_window_management *m_manager;
    std::map<org_kde_plasma_window *, Window> m_windows;
};

} // namespace talmo
