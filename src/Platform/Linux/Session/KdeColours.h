#pragma once

#include <QPalette>
#include <QStringList>

#include <optional>

namespace talmo {

/// The colours of Plasma: those in its settings, or else those of the colour scheme that the settings name, which is
/// Breeze as long as the user has chosen none. None if there is no file of that scheme.
///
/// `settings`: Plasma's settings files, of which the first that has an entry counts. `schemes`: the folders of the
/// colour schemes.
std::optional<QPalette> kdePalette(const QStringList &settings, const QStringList &schemes);
/// Those of this session.
std::optional<QPalette> kdePalette();

} // namespace talmo
