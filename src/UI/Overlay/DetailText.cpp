#include "UI/Overlay/DetailText.h"

#include "Base/Text.h"

#include <QFontMetricsF>
#include <QList>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace talmo {

namespace {

/// Longer than two lines can hold, so that only this many characters from the end need to be measured.
constexpr qsizetype longestMeasuredText = 1000;

const QString ellipsis = QStringLiteral("…");

struct Lines {
    int count = 0;
    qreal widest = 0;
};

void prepare(QTextLayout &layout)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    const bool isRightToLeft = layout.text().isRightToLeft();
    option.setTextDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setAlignment((isRightToLeft ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute);
    layout.setTextOption(option);
}

/// Breaks the text, stopping at `mostLines` + 1 lines.
Lines breakIntoLines(QTextLayout &layout, int width, int mostLines, int lineHeight)
{
    Lines lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid() && lines.count <= mostLines; line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, lines.count * lineHeight));
        lines.widest = std::max(lines.widest, line.naturalTextWidth());
        ++lines.count;
    }
    layout.endLayout();
    return lines;
}

Lines measure(const QString &text, const QFont &font, int width, int mostLines)
{
    QTextLayout layout(text, font);
    prepare(layout);
    return breakIntoLines(layout, width, mostLines, 0);
}

/// The positions at which the visible part may begin, in words or in characters.
QList<qsizetype> beginnings(const QString &text, QTextBoundaryFinder::BoundaryType type)
{
    QList<qsizetype> positions;
    QTextBoundaryFinder finder(type, text);
    for (auto position = finder.toNextBoundary(); position >= 0; position = finder.toNextBoundary()) {
        const bool isBeginning =
            type == QTextBoundaryFinder::Grapheme || (position < text.size() && text.at(position - 1).isSpace());
        if (isBeginning) {
            positions.append(position);
        }
    }
    return positions;
}

/// The text from the first of these positions from which it fits; empty if it fits from none.
QString longestFitting(const QString &text, const QList<qsizetype> &positions, const QFont &font, int width,
                       int mostLines)
{
    const auto tail = [&text](qsizetype position) { return ellipsis + text.mid(position); };
    const auto isTooLong = [&](qsizetype position) {
        return measure(tail(position), font, width, mostLines).count > mostLines;
    };
    const auto found = std::partition_point(positions.cbegin(), positions.cend(), isTooLong);
    return found == positions.cend() || *found >= text.size() ? QString() : tail(*found);
}

QString lastPart(const QString &text)
{
    if (text.size() <= longestMeasuredText) {
        return text;
    }
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.setPosition(text.size() - longestMeasuredText);
    const auto position = finder.isAtBoundary() ? finder.position() : finder.toNextBoundary();
    return text.mid(position);
}

/// The layout would start a new line at each line break, and a tab has no tab stop.
QString withoutLineBreaks(QString text)
{
    const auto isBreak = [](QChar character) {
        return character == QLatin1Char('\t') ||
               (Text::isWhitespaceOrNewline(character.unicode()) && !Text::isSpace(character.unicode()));
    };
    std::replace_if(text.begin(), text.end(), isBreak, QLatin1Char(' '));
    return text;
}

} // namespace

DetailText::DetailText(const QString &text, const QFont &font, int width, int mostLines)
    : m_font(font)
{
    const QString line = withoutLineBreaks(lastPart(text));
    Lines lines = measure(line, font, width, mostLines);
    m_shownText = line;
    m_isCut = lines.count > mostLines || line.size() < text.size();
    if (m_isCut) {
        m_shownText = longestFitting(line, beginnings(line, QTextBoundaryFinder::Word), font, width, mostLines);
        if (m_shownText.isEmpty()) { // A single word that is too long.
            m_shownText = longestFitting(line, beginnings(line, QTextBoundaryFinder::Grapheme), font, width, mostLines);
        }
        lines = measure(m_shownText, font, width, mostLines);
    }
    // Wrapped text takes the whole width, so that it keeps its width while it grows.
    const int widest = lines.count > 1 ? width : static_cast<int>(std::ceil(lines.widest));
    m_size = QSize(widest, lines.count * lineHeight(font));
}

void DetailText::paint(QPainter &painter, const QPointF &topLeft, int width, const QColor &colour) const
{
    QTextLayout layout(m_shownText, m_font);
    prepare(layout);
    breakIntoLines(layout, width, m_size.height() / lineHeight(m_font), lineHeight(m_font));
    painter.setPen(colour);
    layout.draw(&painter, topLeft);
}

int DetailText::lineHeight(const QFont &font)
{
    return static_cast<int>(std::ceil(QFontMetricsF(font).height()));
}

} // namespace talmo
