#include "PanelIcon.h"

#include <QHash>
#include <QRegion>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <vector>

namespace talmo::testbed {

namespace {

/// As WCAG 2 defines it.
double luminance(const QColor &colour)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrastOf(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// The most frequent colour of the pixels around a rectangle.
QColor colourAround(const QImage &image, const QRect &rect)
{
    const QRect frame = rect.adjusted(-2, -2, 2, 2) & image.rect();
    QHash<QRgb, int> counts;
    for (int y = frame.top(); y <= frame.bottom(); ++y) {
        for (int x = frame.left(); x <= frame.right(); ++x) {
            if (!rect.contains(x, y)) {
                ++counts[image.pixel(x, y)];
            }
        }
    }
    const auto most = std::max_element(counts.cbegin(), counts.cend());
    return most == counts.cend() ? QColor() : QColor(most.key());
}

/// More than a translucent panel takes on of what is behind it.
bool differ(QRgb one, QRgb other)
{
    constexpr int most = 24;
    return std::abs(qRed(one) - qRed(other)) > most || std::abs(qGreen(one) - qGreen(other)) > most ||
           std::abs(qBlue(one) - qBlue(other)) > most;
}

/// Changes with a gap this wide between them belong to different things, such as an icon and a clock.
constexpr int widestGap = 5;
constexpr int smallestSymbol = 5;

/// What has changed, each part of the panel by itself.
std::vector<QRegion> parts(const QRegion &changed)
{
    std::vector<QRegion> found;
    for (int x = changed.boundingRect().left(); x <= changed.boundingRect().right(); ++x) {
        const QRegion column = changed & QRect(x, 0, 1, changed.boundingRect().bottom() + 1);
        if (column.isEmpty()) {
            continue;
        }
        if (found.empty() || x - found.back().boundingRect().right() > widestGap) {
            found.emplace_back();
        }
        found.back() += column;
    }
    return found;
}

bool isLikeSymbol(const QRegion &part)
{
    const QSize size = part.boundingRect().size();
    const auto [shorter, longer] = std::minmax({size.width(), size.height()});
    return shorter >= smallestSymbol && longer <= PanelIcon::highestPanel && longer <= 3 * shorter;
}

PanelIcon measured(const QRegion &symbol, const QImage &now)
{
    constexpr int rim = 6; // The disc around the symbol.
    PanelIcon icon;
    icon.place = symbol.boundingRect().adjusted(-rim, -rim, rim, rim) & now.rect();
    icon.panel = colourAround(now, icon.place);
    std::vector<double> contrasts;
    for (int y = icon.place.top(); y <= icon.place.bottom(); ++y) {
        for (int x = icon.place.left(); x <= icon.place.right(); ++x) {
            contrasts.push_back(contrastOf(now.pixelColor(x, y), icon.panel));
        }
    }
    // A tenth of it is more than a line's faint edges.
    const auto tenth = contrasts.begin() + static_cast<std::ptrdiff_t>(contrasts.size() / 10);
    std::nth_element(contrasts.begin(), tenth, contrasts.end(), std::greater());
    icon.contrast = *tenth;
    return icon;
}

} // namespace

std::optional<PanelIcon> PanelIcon::find(const QImage &before, const QImage &now)
{
    for (const int top : {0, now.height() - PanelIcon::highestPanel}) {
        QRegion changed;
        for (int y = top; y < top + PanelIcon::highestPanel; ++y) {
            for (int x = now.width() / 2; x < now.width(); ++x) {
                if (differ(now.pixel(x, y), before.pixel(x, y))) {
                    changed += QRect(x, y, 1, 1);
                }
            }
        }
        const auto all = parts(changed);
        const auto part = std::find_if(all.begin(), all.end(), &isLikeSymbol);
        if (part != all.end()) {
            return measured(*part, now);
        }
    }
    return std::nullopt;
}

} // namespace talmo::testbed
