#pragma once

#include <QObject>

#include <functional>
#include <vector>

namespace talmo {

/// A keyboard that the desktop lends for one shortcut at a time: GNOME shows an indicator for as long as it is lent.
/// Main thread.
class LentKeyboard : public QObject {
public:
    /// Whether the desktop lent it. Called once, unless the keyboard is destroyed first.
    using Handler = std::function<void(bool wasLent)>;

    using QObject::QObject;

    /// Whether the user has allowed it; press() then needs no dialog.
    virtual bool isGranted() const = 0;
    /// Has the desktop ask the user, if it does that; takes as long as the user does.
    virtual void request(Handler handler) = 0;
    /// Presses these keys in order and releases them in the opposite one; codes as the kernel's. A desktop that does
    /// not lend the keyboard within a second and a half does not get the keys later, either.
    virtual void press(const std::vector<quint32> &keys, Handler handler) = 0;
};

} // namespace talmo
