#pragma once

#include <QString>

namespace talmo {

/// The list of enabled extensions in GNOME Shell's settings, which a shell reads when it starts. It may name extensions
/// that the running shell does not know yet. Blocks for as long as the settings service takes.
namespace ShellSettings {

/// False if there are no such settings.
bool isEnabled(const QString &extension);
/// False if it cannot be stored.
bool enable(const QString &extension);

} // namespace ShellSettings

} // namespace talmo
