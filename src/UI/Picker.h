#pragma once

#include <QComboBox>
#include <QWheelEvent>

namespace talmo {

/// A drop-down list that the mouse wheel does not change: the wheel scrolls the page that the picker is on.
class Picker final : public QComboBox {
public:
    Picker()
    {
        // Not by the wheel: a page that scrolls past would leave the focus on whatever was under the pointer.
        setFocusPolicy(Qt::StrongFocus);
    }

protected:
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};

} // namespace talmo
