#pragma once

#include "accuracy/Listener.h"

#include <QString>

namespace talmo::accuracy {

/// Recognises a file with Debian's PocketSphinx and its default settings, in the way of pocketsphinx_continuous: the
/// measure for what Talmo adds to it. Every file is heard by a new decoder. Throws Error.
PacedTranscript hearWithStockPocketSphinx(const QString &file);

} // namespace talmo::accuracy
