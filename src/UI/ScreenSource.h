#pragma once

#include <QList>
#include <QPoint>
#include <QRect>

#include <optional>

namespace talmo {

struct Screen {
    QRect frame;
    /// Without what bars and docks take up.
    QRect visibleFrame;
};

/// The screens and the pointer, in logical pixels, y growing downwards. Main thread; read anew at every call.
class ScreenSource {
public:
    virtual ~ScreenSource() = default;

    /// In the system's order.
    virtual QList<Screen> screens() const = 0;
    virtual std::optional<Screen> mainScreen() const = 0;
    virtual QPoint mouseLocation() const = 0;
};

/// The first screen that the pointer is on, else the main screen, if there is one.
std::optional<Screen> screenUnderPointer(const ScreenSource &source);

} // namespace talmo
