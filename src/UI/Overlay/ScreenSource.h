#pragma once

#include <QList>
#include <QObject>
#include <QPoint>
#include <QRect>

#include <optional>

namespace talmo {

struct Screen {
    QRect frame;
    /// The frame without the areas reserved for bars and docks.
    QRect visibleFrame;
};

/// The screens and the pointer, in logical pixels, y growing downwards. Main thread; queried afresh at every call.
class ScreenSource : public QObject {
    Q_OBJECT

public:
    /// In the system's order.
    virtual QList<Screen> screens() const = 0;
    virtual std::optional<Screen> mainScreen() const = 0;
    virtual QPoint mouseLocation() const = 0;

Q_SIGNALS:
    /// A screen was added.
    void screenAdded();
};

/// The first screen that contains the pointer, else the main screen, if there is one.
std::optional<Screen> screenUnderPointer(const ScreenSource &source);

} // namespace talmo
