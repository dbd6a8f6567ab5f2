#pragma once

#include <QList>
#include <QObject>
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

/// The first screen that the pointer is on, else the main screen, if there is one.
std::optional<Screen> screenUnderPointer(const ScreenSource &source);

} // namespace talmo
