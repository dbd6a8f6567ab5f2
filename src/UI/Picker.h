#pragma once

#include "UI/Style/Appearance.h"

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
    /// For entries of any length: wide enough for most, and no wider for the others.
    static Picker *make(const QString &accessibleName)
    {
        auto *picker = new Picker;
        picker->setFont(Appearance::font(Appearance::titleSize));
        picker->setAccessibleName(accessibleName);
        picker->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        constexpr int charactersShown = 26;
        picker->setMinimumContentsLength(charactersShown);
        return picker;
    }

protected:
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};

} // namespace talmo
