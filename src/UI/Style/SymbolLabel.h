#pragma once

#include <QPalette>
#include <QString>
#include <QWidget>

#include <functional>

namespace talmo {

/// A symbol beside a text, in a colour that follows the palette. It has an accessible name if its meaning is not in the
/// text beside it.
class SymbolLabel final : public QWidget {
public:
    /// Returns the colour for a palette.
    using Colour = std::function<QColor(const QPalette &)>;

    /// `size`: at an ordinary system font.
    SymbolLabel(const QString &symbol, Colour colour, int size = 16);

    void setSymbol(const QString &symbol, Colour colour);
    const QString &symbol() const { return m_symbol; }

    QSize sizeHint() const override { return {m_size, m_size}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
    Colour m_colour;
    int m_size;
};

} // namespace talmo
