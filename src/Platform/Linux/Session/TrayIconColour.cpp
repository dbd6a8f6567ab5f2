#include "Platform/Linux/Session/TrayIconColour.h"

#include <algorithm>

namespace talmo {

QColor trayInk(const QList<quint32> &trayColours, const std::optional<QColor> &ground, const QStringList &desktops,
               ColourScheme scheme)
{
    const QColor light(0xf4, 0xf4, 0xf4);
    const QColor dark(0x2e, 0x2e, 0x2e);
    constexpr qsizetype channels = 3;
    if (trayColours.size() >= channels) {
        const auto channel = [&trayColours](qsizetype index) { return static_cast<quint16>(trayColours.at(index)); };
        return QColor::fromRgba64(channel(0), channel(1), channel(2));
    }
    if (ground) {
        constexpr int middle = 140;
        return qGray(ground->rgb()) < middle ? light : dark;
    }
    // The bars of these desktops are dark whatever the windows are.
    const QStringList darkBars{QStringLiteral("GNOME"), QStringLiteral("Unity"), QStringLiteral("Pantheon")};
    const bool hasDarkBar =
        std::any_of(desktops.cbegin(), desktops.cend(), [&](const auto &name) { return darkBars.contains(name); });
    return hasDarkBar || scheme == ColourScheme::Dark ? light : dark;
}

} // namespace talmo
