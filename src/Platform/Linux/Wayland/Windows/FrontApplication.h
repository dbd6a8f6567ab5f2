#pragma once

#include <QString>

#include <functional>

namespace talmo {

/// The application whose window has the keyboard focus, as far as the compositor says.
struct FrontApplication {
    /// False if the compositor does not report it, or no window has the focus.
    bool isKnown = false;
    /// Whether the compositor would have reported a focused window.
    bool isNone = false;
    /// Its application id; the class of its windows for programs of X.
    QString name;
    bool operator==(const FrontApplication &) const = default;
};

class WaylandSession;

/// On the session's thread.
using FrontSource = std::function<FrontApplication()>;

/// By what the compositor offers for it. On the session's thread, where its last copy must be destroyed as well.
FrontSource openFrontSource(WaylandSession &session);

} // namespace talmo
