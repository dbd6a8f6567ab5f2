#pragma once

#include <QWidget>

namespace talmo {

/// Qt announces a name and a description as changed whenever they are set, even to what they are already.
inline void nameAccessibly(QWidget &view, const QString &name)
{
    if (view.accessibleName() != name) {
        view.setAccessibleName(name);
    }
}

inline void describeAccessibly(QWidget &view, const QString &description)
{
    if (view.accessibleDescription() != description) {
        view.setAccessibleDescription(description);
    }
}

} // namespace talmo
