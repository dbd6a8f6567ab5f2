#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QSize>
#include <QString>

class QPainter;

namespace talmo {

/// A text of a few lines at most. If it is too long, its beginning is cut, so that the newest words stay visible.
class DetailText {
public:
    DetailText() = default;
    /// `width`: the maximum width of a line, in logical pixels.
    DetailText(const QString &text, const QFont &font, int width, int mostLines);

    bool isEmpty() const { return m_shownText.isEmpty(); }
    /// Whether the beginning was cut.
    bool isCut() const { return m_isCut; }
    /// The visible part of the text, after an ellipsis if the beginning was cut.
    const QString &shownText() const { return m_shownText; }
    /// The size of the lines. All lines have the same height whatever their glyphs, so that the text does not jump.
    QSize size() const { return m_size; }
    /// Right-to-left text is aligned to the right of `width`, which must not be less than the text's own.
    void paint(QPainter &painter, const QPointF &topLeft, int width, const QColor &colour) const;

    static int lineHeight(const QFont &font);

private:
    QFont m_font;
    QString m_shownText;
    QSize m_size;
    bool m_isCut = false;
};

} // namespace talmo
