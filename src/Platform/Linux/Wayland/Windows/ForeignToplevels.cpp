#include "Platform/Linux/Wayland/Windows/ForeignToplevels.h"

#include <algorithm>
#include <span>

namespace talmo {

ForeignToplevels::ForeignToplevels(WaylandSession &session)
    : m_session(session),
      m_manager(session.bind<zwlr_foreign_toplevel_manager_v1>(zwlr_foreign_toplevel_manager_v1_interface, 1))
{
    if (m_manager == nullptr) {
        return;
    }
    static constexpr zwlr_foreign_toplevel_manager_v1_listener listener = {
        [](void *self, zwlr_foreign_toplevel_manager_v1 *, zwlr_foreign_toplevel_handle_v1 *handle) {
            static_cast<ForeignToplevels *>(self)->listenTo(handle);
        },
        [](void *, zwlr_foreign_toplevel_manager_v1 *) {}};
    zwlr_foreign_toplevel_manager_v1_add_listener(m_manager, &listener, this);
    session.synchronise();
}

ForeignToplevels::~ForeignToplevels()
{
    for (const auto &[handle, window] : m_windows) {
        zwlr_foreign_toplevel_handle_v1_destroy(handle);
    }
    if (m_manager != nullptr) {
        zwlr_foreign_toplevel_manager_v1_stop(m_manager);
        wl_proxy_destroy(reinterpret_cast<wl_proxy *>(m_manager)); // NOLINT: every protocol object is a proxy.
    }
    m_session.flush();
}

void ForeignToplevels::listenTo(zwlr_foreign_toplevel_handle_v1 *handle)
{
    using Handle = zwlr_foreign_toplevel_handle_v1;
    static constexpr zwlr_foreign_toplevel_handle_v1_listener listener = {
        [](void *, Handle *, const char *) {},
        [](void *self, Handle *window, const char *application) {
            static_cast<ForeignToplevels *>(self)->m_windows[window].application = QString::fromUtf8(application);
        },
        [](void *, Handle *, wl_output *) {},
        [](void *, Handle *, wl_output *) {},
        [](void *self, Handle *window, wl_array *states) {
            static_cast<ForeignToplevels *>(self)->m_windows[window].isActive = isActivated(*states);
        },
        [](void *, Handle *) {},
        [](void *self, Handle *window) { static_cast<ForeignToplevels *>(self)->forget(window); }};
    m_windows[handle] = {};
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &listener, this);
}

void ForeignToplevels::forget(zwlr_foreign_toplevel_handle_v1 *handle)
{
    m_windows.erase(handle);
    zwlr_foreign_toplevel_handle_v1_destroy(handle);
}

bool ForeignToplevels::isActivated(const wl_array &states)
{
    const std::span<const uint32_t> all(static_cast<const uint32_t *>(states.data), states.size / sizeof(uint32_t));
    return std::find(all.begin(), all.end(), ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED) != all.end();
}

FrontApplication ForeignToplevels::front() const
{
    const auto active =
        std::find_if(m_windows.begin(), m_windows.end(), [](const auto &each) { return each.second.isActive; });
    if (active == m_windows.end()) {
        return {false, m_manager != nullptr, {}};
    }
    // Without a name, all that is known is that there is an application.
    const QString &name = active->second.application;
    return {!name.isEmpty(), false, name};
}

} // namespace talmo
