#pragma once

namespace talmo {

/// Has the views' texts worded for Linux, and in the user's language where there is a catalogue for it. Once, under a
/// QCoreApplication.
void installWording();

} // namespace talmo
