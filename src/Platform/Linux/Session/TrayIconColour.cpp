#include "Platform/Linux/Session/TrayIconColour.h"

#include <algorithm>

namespace talmo {

namespace {

constexpr QRgb light = 0xfffafafa;
constexpr QRgb dark = 0xff1a1a1a;

/// None if the tray has not announced one.
std::optional<QColor> announcedInk(const QList<quint32> &trayColours)
{
    constexpr qsizetype channels = 3;
    if (trayColours.size() < channels) {
        return std::nullopt;
    }
    const auto channel = [&trayColours](qsizetype index) { return static_cast<quint16>(trayColours.at(index)); };
    return QColor::fromRgba64(channel(0), channel(1), channel(2));
}

/// Of the two, the one that has more contrast.
QColor inkOn(const QColor &ground)
{
    return Appearance::contrast(light, ground) > Appearance::contrast(dark, ground) ? light : dark;
}

/// The bars of some desktops are dark whatever the windows are.
QColor likelyInk(const QStringList &desktops, ColourScheme scheme)
{
    const QStringList darkBars{QStringLiteral("GNOME"), QStringLiteral("Unity"), QStringLiteral("Pantheon")};
    const bool hasDarkBar =
        std::any_of(desktops.cbegin(), desktops.cend(), [&](const auto &name) { return darkBars.contains(name); });
    return hasDarkBar || scheme == ColourScheme::Dark ? light : dark;
}

} // namespace

Symbol::Inks trayInks(const QList<quint32> &trayColours, const std::optional<QColor> &ground,
                      const QStringList &desktops, ColourScheme scheme)
{
    const auto announced = announcedInk(trayColours);
    if (ground) {
        const bool isSeen = announced && Appearance::contrast(*announced, *ground) >= Appearance::shapeContrast;
        return {isSeen ? *announced : inkOn(*ground), std::nullopt};
    }
    const QColor ink = announced.value_or(likelyInk(desktops, scheme));
    return {ink, inkOn(ink)};
}

} // namespace talmo
