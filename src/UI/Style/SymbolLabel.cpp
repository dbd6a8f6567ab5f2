#include "UI/Style/SymbolLabel.h"

#include "UI/Style/Appearance.h"
#include "UI/Style/Symbol.h"

#include <QPainter>

#include <utility>

namespace talmo {

SymbolLabel::SymbolLabel(const QString &symbol, Colour colour, int size)
    : m_symbol(symbol),
      m_colour(std::move(colour)),
      m_size(Appearance::scaled(size))
{
    setFixedSize(m_size, m_size);
}

void SymbolLabel::setSymbol(const QString &symbol, Colour colour)
{
    m_symbol = symbol;
    m_colour = std::move(colour);
    update();
}

void SymbolLabel::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    Symbol::paint(painter, rect(), m_symbol, m_colour(palette()));
}

} // namespace talmo
