#include "UI/Style/Separator.h"

#include "UI/Style/Appearance.h"

#include <QPainter>

namespace talmo {

Separator::Separator(int height, int inset)
    : m_inset(inset)
{
    setFixedHeight(height);
}

void Separator::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.fillRect(QRect(m_inset, height() / 2, width() - 2 * m_inset, 1), Appearance::hairline(palette()));
}

} // namespace talmo
