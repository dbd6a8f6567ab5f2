#include "UI/Style/Appearance.h"

#include <QGuiApplication>

#include <algorithm>

namespace talmo::Appearance {

namespace {

QColor translucent(QColor colour, qreal alpha)
{
    colour.setAlphaF(static_cast<float>(alpha));
    return colour;
}

} // namespace

QFont font(int pixelSize, QFont::Weight weight)
{
    QFont result = QGuiApplication::font();
    result.setPixelSize(pixelSize);
    result.setWeight(weight);
    return result;
}

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightnessF() < palette.color(QPalette::WindowText).lightnessF();
}

ColourScheme scheme(const QPalette &palette)
{
    return isDark(palette) ? ColourScheme::Dark : ColourScheme::Light;
}

QColor secondary(const QPalette &palette)
{
    constexpr qreal strength = 0.66;
    const QColor text = palette.color(QPalette::WindowText);
    return translucent(text, std::min<qreal>(strength, text.alphaF())); // Disabled text is fainter than that.
}

QColor hairline(const QPalette &palette)
{
    constexpr qreal strength = 0.12;
    return translucent(palette.color(QPalette::WindowText), strength);
}

QColor groupSurface(const QPalette &palette)
{
    constexpr qreal strength = 0.045;
    return translucent(palette.color(QPalette::WindowText), strength);
}

QColor orange(const QPalette &palette)
{
    return isDark(palette) ? QColor(0xff, 0xa3, 0x3a) : QColor(0xb3, 0x54, 0x00);
}

QColor green(const QPalette &palette)
{
    return isDark(palette) ? QColor(0x4c, 0xd9, 0x64) : QColor(0x1b, 0x7f, 0x37);
}

QPalette palette(ColourScheme scheme)
{
    const bool dark = scheme == ColourScheme::Dark;
    const QColor window = dark ? QColor(0x24, 0x25, 0x28) : QColor(0xf4, 0xf4, 0xf6);
    const QColor base = dark ? QColor(0x1b, 0x1c, 0x1f) : QColor(0xff, 0xff, 0xff);
    const QColor button = dark ? QColor(0x3a, 0x3b, 0x40) : QColor(0xfa, 0xfa, 0xfb);
    const QColor text = dark ? QColor(0xf0, 0xf0, 0xf2) : QColor(0x1c, 0x1c, 0x1e);
    const QColor accent = dark ? QColor(0x5b, 0x6d, 0xf0) : QColor(0x4b, 0x5b, 0xdc);
    QPalette result(text, button, dark ? QColor(0x4a, 0x4b, 0x50) : QColor(0xff, 0xff, 0xff),
                    dark ? QColor(0x12, 0x12, 0x14) : QColor(0xb4, 0xb4, 0xba),
                    dark ? QColor(0x1e, 0x1e, 0x21) : QColor(0xd6, 0xd6, 0xda), text, Qt::white, base, window);
    result.setColor(QPalette::ButtonText, text);
    result.setColor(QPalette::AlternateBase, window);
    result.setColor(QPalette::Highlight, accent);
    result.setColor(QPalette::HighlightedText, Qt::white);
    result.setColor(QPalette::Link, accent);
    result.setColor(QPalette::ToolTipBase, window);
    result.setColor(QPalette::ToolTipText, text);
    result.setColor(QPalette::PlaceholderText, secondary(result));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        constexpr qreal disabledStrength = 0.4;
        result.setColor(QPalette::Disabled, role, translucent(text, disabledStrength));
    }
    return result;
}

} // namespace talmo::Appearance
