#include "UI/Style/Appearance.h"

#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace talmo::Appearance {

namespace {

/// The usual size of a desktop's font, at which the views have the sizes that they name: 10 points.
constexpr qreal ordinaryFont = 13.0 + 1.0 / 3;
constexpr qreal pixelsPerPoint = 96.0 / 72;

QColor translucent(QColor colour, qreal alpha)
{
    colour.setAlphaF(static_cast<float>(alpha));
    return colour;
}

/// The colour that is seen if `above`, which may be translucent, lies on `ground`.
QColor blended(const QColor &above, const QColor &ground)
{
    const float strength = above.alphaF();
    const auto mixed = [strength](float one, float other) { return one * strength + other * (1 - strength); };
    return QColor::fromRgbF(mixed(above.redF(), ground.redF()), mixed(above.greenF(), ground.greenF()),
                            mixed(above.blueF(), ground.blueF()));
}

/// As the WCAG define it.
qreal luminance(const QColor &colour)
{
    const auto linear = [](qreal part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// The surface of a group, on which everything has less contrast than on the window.
QColor opaqueGroupSurface(const QPalette &palette)
{
    return blended(groupSurface(palette), palette.color(QPalette::Window));
}

} // namespace

qreal textScale()
{
    const QFont font = QGuiApplication::font();
    const qreal pixels = font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * pixelsPerPoint;
    return std::max<qreal>(1, pixels / ordinaryFont);
}

int scaled(int length)
{
    return qRound(length * textScale());
}

QFont font(int size, QFont::Weight weight)
{
    QFont result = QGuiApplication::font();
    result.setPixelSize(scaled(size));
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
    const QColor hue = isDark(palette) ? QColor(0xff, 0xa3, 0x3a) : QColor(0xa6, 0x4d, 0x00);
    return legible(hue, opaqueGroupSurface(palette), textContrast);
}

QColor green(const QPalette &palette)
{
    const QColor hue = isDark(palette) ? QColor(0x4c, 0xd9, 0x64) : QColor(0x18, 0x74, 0x31);
    return legible(hue, opaqueGroupSurface(palette), textContrast);
}

QColor outline(const QPalette &palette)
{
    constexpr qreal strength = 0.55;
    const QColor surface = opaqueGroupSurface(palette);
    return legible(blended(translucent(palette.color(QPalette::WindowText), strength), surface), surface,
                   shapeContrast);
}

qreal contrast(const QColor &one, const QColor &other)
{
    constexpr qreal glare = 0.05;
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + glare) / (darker + glare);
}

QColor legible(const QColor &colour, const QColor &ground, qreal wanted)
{
    const bool darkens = contrast(Qt::black, ground) > contrast(Qt::white, ground);
    const QColor end = darkens ? Qt::black : Qt::white;
    constexpr int steps = 40;
    QColor result = colour;
    for (int step = 1; step <= steps && contrast(result, ground) < wanted; ++step) {
        result = blended(translucent(end, qreal(step) / steps), colour);
    }
    return result;
}

QPalette palette(ColourScheme scheme)
{
    const bool dark = scheme == ColourScheme::Dark;
    const QColor window = dark ? QColor(0x24, 0x25, 0x28) : QColor(0xf4, 0xf4, 0xf6);
    const QColor base = dark ? QColor(0x1b, 0x1c, 0x1f) : QColor(0xff, 0xff, 0xff);
    const QColor button = dark ? QColor(0x3a, 0x3b, 0x40) : QColor(0xfa, 0xfa, 0xfb);
    const QColor text = dark ? QColor(0xf0, 0xf0, 0xf2) : QColor(0x1c, 0x1c, 0x1e);
    const QColor accent = dark ? QColor(0x57, 0x67, 0xeb) : QColor(0x4b, 0x5b, 0xdc);
    QPalette result(text, button, dark ? QColor(0x4a, 0x4b, 0x50) : QColor(0xff, 0xff, 0xff),
                    dark ? QColor(0x12, 0x12, 0x14) : QColor(0xb4, 0xb4, 0xba),
                    dark ? QColor(0x1e, 0x1e, 0x21) : QColor(0xd6, 0xd6, 0xda), text, Qt::white, base, window);
    result.setColor(QPalette::ButtonText, text);
    result.setColor(QPalette::AlternateBase, window);
    result.setColor(QPalette::Highlight, accent);
    result.setColor(QPalette::HighlightedText, Qt::white);
    result.setColor(QPalette::Link, dark ? QColor(0x8f, 0x9c, 0xff) : accent);
    result.setColor(QPalette::ToolTipBase, window);
    result.setColor(QPalette::ToolTipText, text);
    result.setColor(QPalette::PlaceholderText, secondary(result));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        constexpr qreal disabledStrength = 0.4;
        result.setColor(QPalette::Disabled, role, translucent(text, disabledStrength));
    }
    return result;
}

QPalette legible(QPalette palette)
{
    const QColor link = legible(palette.color(QPalette::Link), opaqueGroupSurface(palette), textContrast);
    palette.setColor(QPalette::Link, link);
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        const QColor selected = legible(palette.color(group, QPalette::HighlightedText),
                                        palette.color(group, QPalette::Highlight), textContrast);
        palette.setColor(group, QPalette::HighlightedText, selected);
    }
    return palette;
}

} // namespace talmo::Appearance
