#pragma once

namespace talmo {

/// Installs the texts for Linux and, if the user reads another language than English, Talmo's and Qt's translations for
/// it where there are any. Call once, after creating the QCoreApplication.
void installWording();

} // namespace talmo
