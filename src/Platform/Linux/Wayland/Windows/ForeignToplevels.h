#pragma once

#include "Platform/Linux/Wayland/WaylandSession.h"
#include "Platform/Linux/Wayland/Windows/FrontApplication.h"

#include <foreign-toplevel.h>

#include <map>

namespace talmo {

/// The windows of the session, by wlr-foreign-toplevel-management. The session's thread only.
class ForeignToplevels {
public:
    explicit ForeignToplevels(WaylandSession &session);
    ~ForeignToplevels();
    ForeignToplevels(const ForeignToplevels &) = delete;
    ForeignToplevels &operator=(const ForeignToplevels &) = delete;

    FrontApplication front() const;

private:
    struct Window {
        QString application;
        bool isActive = false;
    };

    void listenTo(zwlr_foreign_toplevel_handle_v1 *handle);
    void forget(zwlr_foreign_toplevel_handle_v1 *handle);
    static bool isActivated(const wl_array &states);

    WaylandSession &m_session;
    zwlr_foreign_toplevel_manager_v1 *m_manager;
    std::map<zwlr_foreign_toplevel_handle_v1 *, Window> m_windows;
};

} // namespace talmo
