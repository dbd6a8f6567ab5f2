#pragma once

#include <QProxyStyle>

namespace talmo {

/// Draws a check box that is visible on every surface, even unchecked, and as large as the text beside it; Qt's own
/// styles draw its frame hardly darker than the window. Everything else is the base style's.
class ToggleStyle final : public QProxyStyle {
public:
    /// Lives as long as the application.
    static ToggleStyle *shared();

    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
};

} // namespace talmo
