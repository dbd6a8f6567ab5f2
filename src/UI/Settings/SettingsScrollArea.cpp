#include "UI/Settings/SettingsScrollArea.h"

#include "UI/Style/Appearance.h"

namespace talmo {

namespace {

/// Tiling window managers give a window all of the screen, where a label and its control would be far apart.
constexpr int widestPage = 700;

} // namespace

QScrollArea *scrollAreaOf(QWidget *page, const QString &name)
{
    auto *area = new QScrollArea;
    area->setAccessibleName(name);
    page->setMaximumWidth(Appearance::scaled(widestPage));
    area->setWidget(page);
    area->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
    return area;
}

} // namespace talmo
