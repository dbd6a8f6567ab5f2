#pragma once

#include <QString>

#include <functional>

namespace talmo {

/// The application whose window has the keyboard focus, as far as the compositor says.
struct FrontApplication {
    /// False if the compositor tells nobody, or no window has the focus.
    bool isKnown = false;
    /// The compositor would have told if a window had the focus.
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
