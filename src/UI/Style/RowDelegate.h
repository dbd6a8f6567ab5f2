#pragma once

#include <QPainter>
#include <QStyledItemDelegate>

namespace talmo {

/// Rows of a list. The focus on a selected one is a line around it: Qt's own is a bright veil, on which text that is
/// just legible on the colour of the selection no longer is.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
        QStyleOptionViewItem row = option;
        row.state.setFlag(QStyle::State_HasFocus, hasFocus && !isSelected);
        QStyledItemDelegate::paint(painter, row, index);
        if (isSelected && hasFocus) {
            painter->save();
            painter->setPen(option.palette.color(QPalette::HighlightedText));
            painter->drawRect(QRectF(option.rect).adjusted(1.5, 1.5, -1.5, -1.5));
            painter->restore();
        }
    }
};

} // namespace talmo
