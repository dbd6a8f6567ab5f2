#pragma once

#include <QPalette>
#include <QStringList>

#include <optional>

namespace talmo {

/// Plasma's colours: those in its settings, or else those of the scheme that the settings name, which is Breeze until
/// the user chooses one. None if the scheme has no file.
///
/// `settings`: Plasma's settings files; the first one with an entry wins. `schemes`: the folders of the colour schemes.
std::optional<QPalette> kdePalette(const QStringList &settings, const QStringList &schemes);
/// Those of this session.
std::optional<QPalette> kdePalette();

} // namespace talmo
