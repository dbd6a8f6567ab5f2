#pragma once

#include "UI/Style/Appearance.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

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

    /// Replaces all entries, given as titles and ids, and selects the one with that id, else the first. The
    /// same again changes nothing, since a screen reader would read out every entry.
    void setEntries(const QList<std::pair<QString, QString>> &entries, const QString &selected)
    {
        const QSignalBlocker blocker(this);
        if (std::exchange(m_entries, entries) != entries) {
            clear();
            for (const auto &[title, id] : entries) {
                addItem(title, id);
            }
        }
        if (const int index = std::max(findData(selected), 0); index != currentIndex()) {
            setCurrentIndex(index);
        }
    }

protected:
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
    /// An entry that is too long ends in an ellipsis; Qt would cut it in the middle of a letter.
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QStylePainter painter(this);
        painter.setPen(palette().color(QPalette::Text));
        QStyleOptionComboBox option;
        initStyleOption(&option);
        painter.drawComplexControl(QStyle::CC_ComboBox, option);
        constexpr int inset = 4; // Styles keep a little more room around the text than they say.
        const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
        option.currentText =
            option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, field.width() - 2 * inset);
        painter.drawControl(QStyle::CE_ComboBoxLabel, option);
    }

private:
    QList<std::pair<QString, QString>> m_entries;
};

} // namespace talmo
