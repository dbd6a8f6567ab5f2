#include "Platform/Linux/Wayland/Windows/PlasmaWindows.h"

#include <algorithm>

namespace talmo {

namespace {

/// From this version on, windows are identified by a unique id.
constexpr quint32 version = 13;

org_kde_plasma_window_listener makeListener()
{
    using Handle = org_kde_plasma_window;
    org_kde_plasma_window_listener listener{};
    listener.title_changed = [](void *, Handle *, const char *) {};
    listener.virtual_desktop_changed = [](void *, Handle *, int32_t) {};
    listener.themed_icon_name_changed = [](void *, Handle *, const char *) {};
    listener.initial_state = [](void *, Handle *) {};
    listener.parent_window = [](void *, Handle *, Handle *) {};
    listener.geometry = [](void *, Handle *, int32_t, int32_t, uint32_t, uint32_t) {};
    listener.icon_changed = [](void *, Handle *) {};
    listener.pid_changed = [](void *, Handle *, uint32_t) {};
    listener.virtual_desktop_entered = [](void *, Handle *, const char *) {};
    listener.virtual_desktop_left = [](void *, Handle *, const char *) {};
    listener.application_menu = [](void *, Handle *, const char *, const char *) {};
    return listener;
}

} // namespace

bool PlasmaWindows::isOffered(const WaylandSession &session)
{
    return session.offeredVersion(org_kde_plasma_window_management_interface.name) >= version;
}

PlasmaWindows::PlasmaWindows(WaylandSession &session)
    : m_session(session),
      m_manager(session.bind<org_kde_plasma_window_management>(org_kde_plasma_window_management_interface, version))
{
    using Manager = org_kde_plasma_window_management;
    // Newer versions of the protocol have further events, which the bound version never sends.
    static constexpr org_kde_plasma_window_management_listener listener = [] {
        org_kde_plasma_window_management_listener events{};
        events.show_desktop_changed = [](void *, Manager *, uint32_t) {};
        events.window = [](void *, Manager *, uint32_t) {};
        events.stacking_order_changed = [](void *, Manager *, wl_array *) {};
        events.stacking_order_uuid_changed = [](void *, Manager *, const char *) {};
        events.window_with_uuid = [](void *self, Manager *manager, uint32_t, const char *id) {
            static_cast<PlasmaWindows *>(self)->add(org_kde_plasma_window_management_get_window_by_uuid(manager, id));
        };
        return events;
    }();
    org_kde_plasma_window_management_add_listener(m_manager, &listener, this);
    session.synchronise(); // The windows,
    session.synchronise(); // and what they are.
}

PlasmaWindows::~PlasmaWindows()
{
    for (const auto &[handle, window] : m_windows) {
        org_kde_plasma_window_destroy(handle);
    }
    wl_proxy_destroy(reinterpret_cast<wl_proxy *>(m_manager)); // NOLINT: every protocol object is a proxy.
    m_session.flush();
}

void PlasmaWindows::add(org_kde_plasma_window *window)
{
    static const auto listener = [] {
        auto all = makeListener();
        all.app_id_changed = [](void *self, org_kde_plasma_window *changed, const char *application) {
            static_cast<PlasmaWindows *>(self)->m_windows[changed].application = QString::fromUtf8(application);
        };
        all.state_changed = [](void *self, org_kde_plasma_window *changed, uint32_t flags) {
            static_cast<PlasmaWindows *>(self)->m_windows[changed].isActive =
                (flags & ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE) != 0;
        };
        all.unmapped = [](void *self, org_kde_plasma_window *gone) {
            static_cast<PlasmaWindows *>(self)->forget(gone);
        };
        return all;
    }();
    m_windows[window] = {};
    org_kde_plasma_window_add_listener(window, &listener, this);
}

void PlasmaWindows::forget(org_kde_plasma_window *window)
{
    m_windows.erase(window);
    org_kde_plasma_window_destroy(window);
}

FrontApplication PlasmaWindows::front() const
{
    const auto active =
        std::find_if(m_windows.begin(), m_windows.end(), [](const auto &each) { return each.second.isActive; });
    if (active == m_windows.end()) {
        return {false, true, {}};
    }
    const QString &name = active->second.application;
    return {!name.isEmpty(), false, name};
}

} // namespace talmo
