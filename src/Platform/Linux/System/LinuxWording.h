#pragma once

namespace talmo {

/// Installs the texts for Linux, and the translation for the user's language if there is one. Call once, after creating
/// the QCoreApplication.
void installWording();

} // namespace talmo
