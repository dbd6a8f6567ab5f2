#pragma once

#include <QComboBox>
#include <QWheelEvent>

namespace talmo {

/// A drop-down list that the mouse wheel does not change: the wheel scrolls the page that the picker is on.
class Picker final : public QComboBox {
public:
    Picker()
    {
        // No focus by the wheel: scrolling the page would move the focus to whatever is under the pointer.
        setFocusPolicy(Qt::StrongFocus);
    }

protected:
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};

} // namespace talmo
