#pragma once

#include <QFocusFrame>
#include <QObject>
#include <QPointer>

namespace talmo {

/// Shows which control of a window has the keyboard, once the user moves through it by keyboard. Most styles draw that
/// in a line of one pixel, and some not at all.
class FocusRing final : public QObject {
public:
    /// Follows the focus for as long as the window lives.
    explicit FocusRing(QWidget *window);

    /// Null if no control is surrounded.
    const QFocusFrame *frame() const;

private:
    void follow(QWidget *control);

    QWidget *m_window;
    /// Belongs to the page of the control, and goes with it.
    QPointer<QFocusFrame> m_frame;
};

} // namespace talmo
