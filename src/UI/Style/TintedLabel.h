#pragma once

#include <QColor>
#include <QFont>
#include <QLabel>
#include <QPalette>

#include <functional>

namespace talmo {

/// Plain text that wraps, in a colour derived from the palette, so that it follows a change of the colour scheme.
class TintedLabel final : public QLabel {
public:
    using Colour = std::function<QColor(const QPalette &)>;

    TintedLabel(const QFont &font, Colour colour);
    /// A caption: small and dimmed.
    static TintedLabel *caption(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Colour m_colour;
};

} // namespace talmo
