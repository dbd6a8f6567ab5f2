#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QSize>
#include <QString>

class QPainter;

namespace talmo {

/// A text broken into a few lines at most, whose beginning goes where it is too long: the newest words stay.
class DetailText {
public:
    DetailText() = default;
    /// `width`: the most that a line may take, in logical pixels.
    DetailText(const QString &text, const QFont &font, int width, int mostLines);

    bool isEmpty() const { return m_shownText.isEmpty(); }
    /// What is left of the text, behind an ellipsis if something is missing.
    const QString &shownText() const { return m_shownText; }
    /// What the lines take up. Each is as high as every other, whatever is written in it, so that nothing jumps.
    QSize size() const { return m_size; }
    /// Right-to-left text begins at the right of the `width`, which is not less than the text's own.
    void paint(QPainter &painter, const QPointF &topLeft, int width, const QColor &colour) const;

    static int lineHeight(const QFont &font);

private:
    QFont m_font;
    QString m_shownText;
    QSize m_size;
};

} // namespace talmo
