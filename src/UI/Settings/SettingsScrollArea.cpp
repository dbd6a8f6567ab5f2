#include "UI/Settings/SettingsScrollArea.h"

namespace talmo {

QScrollArea *scrollAreaOf(QWidget *page, const QString &name)
{
    auto *area = new QScrollArea;
    area->setAccessibleName(name);
    area->setWidget(page);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
    return area;
}

} // namespace talmo
