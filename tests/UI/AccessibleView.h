#pragma once

#include <QAccessible>
#include <QStringList>
#include <QWidget>

#include <vector>

namespace talmo::test {

/// A view as a screen reader sees it.
struct AccessibleThing {
    QAccessible::Role role;
    QString name;
    bool isEnabled;
    QWidget *widget;
};

inline void collectAccessible(QAccessibleInterface *interface, std::vector<AccessibleThing> &things)
{
    for (int index = 0; interface != nullptr && index < interface->childCount(); ++index) {
        auto *child = interface->child(index);
        if (child == nullptr || child->state().invisible) {
            continue;
        }
        things.push_back({child->role(), child->text(QAccessible::Name), child->state().disabled == 0,
                          qobject_cast<QWidget *>(child->object())});
        collectAccessible(child, things);
    }
}

/// All visible elements, in tree order.
inline std::vector<AccessibleThing> accessibleThings(QWidget &view)
{
    std::vector<AccessibleThing> things;
    collectAccessible(QAccessible::queryAccessibleInterface(&view), things);
    return things;
}

inline QStringList accessibleNames(QWidget &view, QAccessible::Role role)
{
    QStringList names;
    for (const auto &thing : accessibleThings(view)) {
        if (thing.role == role) {
            names.append(thing.name);
        }
    }
    return names;
}

inline QString accessibleText(QWidget &view, QAccessible::Text text)
{
    return QAccessible::queryAccessibleInterface(&view)->text(text);
}

/// The control with that role and name; null if there is none.
inline QWidget *accessibleWidget(QWidget &view, QAccessible::Role role, const QString &name)
{
    for (const auto &thing : accessibleThings(view)) {
        if (thing.role == role && thing.name == name) {
            return thing.widget;
        }
    }
    return nullptr;
}

} // namespace talmo::test
