#include "UI/Settings/Words/WordList.h"

#include "UI/Style/Appearance.h"
#include "UI/Style/RowDelegate.h"
#include "UI/Style/Wording.h"

#include <QPainter>

namespace talmo {

namespace {

constexpr int soundRole = Qt::UserRole;
constexpr int padding = 8;

class WordDelegate final : public RowDelegate {
public:
    using RowDelegate::RowDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        RowDelegate::paint(painter, option, index);
        const QString sound = index.data(soundRole).toString();
        if (sound.isEmpty()) {
            return;
        }
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        painter->save();
        painter->setPen(isSelected ? option.palette.color(QPalette::HighlightedText)
                                   : Appearance::secondary(option.palette));
        painter->setFont(Appearance::font(Appearance::detailSize));
        const QRect area = QStyle::visualRect(option.direction, option.rect,
                                              option.rect.adjusted(option.rect.width() / 2, 0, -padding, 0));
        const QString text =
            painter->fontMetrics().elidedText(QStringLiteral("“%1”").arg(sound), Qt::ElideRight, area.width());
        const auto edge = QStyle::visualAlignment(option.direction, Qt::AlignRight);
        painter->drawText(area, static_cast<int>(edge | Qt::AlignVCenter), text);
        painter->restore();
    }
};

} // namespace

WordList::WordList()
{
    setItemDelegate(new WordDelegate(this));
}

void WordList::setSound(int row, const QString &soundsLike)
{
    auto *word = item(row);
    word->setData(soundRole, soundsLike);
    word->setData(Qt::AccessibleTextRole,
                  soundsLike.isEmpty()
                      ? QVariant()
                      : Wording::text(QT_TRANSLATE_NOOP("Talmo", "%1, sounds like %2")).arg(word->text(), soundsLike));
}

QString WordList::sound(int row) const
{
    return item(row)->data(soundRole).toString();
}

} // namespace talmo
