#include "Platform/Linux/Session/PasswordFieldSearch.h"

#include <algorithm>

namespace talmo {

namespace {

/// A table may have a million cells, and some programs create all of these child objects when asked for them.
constexpr int mostChildren = 250;
/// A page may have more objects than can be checked in time, and each costs the program a moment.
constexpr qsizetype mostObjects = 4000;

/// The objects to descend into: those with the focus, else those that are visible.
QList<Accessible> worthLookingInto(const QList<Accessible> &level, const QList<AccessibilityBus::Status> &statuses)
{
    QList<Accessible> focused;
    QList<Accessible> shown;
    for (qsizetype index = 0; index < level.size(); ++index) {
        const auto &status = statuses[index];
        if (status.isFocused) {
            focused.append(level[index]);
        }
        if (status.isShowing && status.childCount > 0 && status.childCount <= mostChildren) {
            shown.append(level[index]);
        }
    }
    return focused.isEmpty() ? shown : focused;
}

/// The windows with the keyboard focus.
QList<Accessible> activeWindows(AccessibilityBus &bus, const QList<Accessible> &windows)
{
    const auto statuses = bus.statuses(windows);
    QList<Accessible> active;
    for (qsizetype index = 0; index < windows.size(); ++index) {
        if (statuses[index].isActive) {
            active.append(windows[index]);
        }
    }
    return active;
}

bool hasPasswordFocus(AccessibilityBus &bus, QList<Accessible> level)
{
    qsizetype left = mostObjects;
    while (!level.isEmpty() && !bus.isLate()) {
        level.resize(std::min(level.size(), left));
        left -= level.size();
        const auto statuses = bus.statuses(level);
        for (qsizetype index = 0; index < level.size(); ++index) {
            if (statuses[index].isFocused && bus.isPasswordField(level[index])) {
                return true;
            }
        }
        level = bus.children(worthLookingInto(level, statuses));
    }
    return false;
}

} // namespace

bool isInPasswordField(AccessibilityBus &bus, qint64 processId)
{
    const auto windows = bus.children(bus.applications(processId));
    const auto active = activeWindows(bus, windows);
    return hasPasswordFocus(bus, active.isEmpty() ? windows : active); // Some programs report no window as active.
}

bool isInActivePasswordField(AccessibilityBus &bus)
{
    return hasPasswordFocus(bus, activeWindows(bus, bus.children(bus.applications())));
}

} // namespace talmo
