#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

#include <optional>

namespace talmo::testbed {

/// A round icon in a panel whose symbol has changed, as two screenshots tell.
struct PanelIcon {
    /// Panels are looked for no farther from the upper and lower edges; in pixels.
    static constexpr int highestPanel = 48;

    QRect place;
    /// What is around it.
    QColor panel;
    /// How much the most visible part of it is set off from the panel: from 1 to 21. Stray pixels do not count.
    double contrast = 1;

    /// Searches the right half of the upper and lower edges, where else only such things as a clock change. Nullopt if
    /// nothing of a symbol's shape has changed.
    static std::optional<PanelIcon> find(const QImage &before, const QImage &now);
};

} // namespace talmo::testbed
