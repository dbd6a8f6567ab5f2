#pragma once

#include "Insertion/Pasteboard.h"

namespace talmo {

/// What to offer beside a text so that clipboard history programs leave it out. docs/Clipboard.md lists which do.
QList<PasteboardRepresentation> historyHints();

/// Whether the owner of this content asked history programs to leave it out, as password managers do. Names and values
/// have to match exactly, as they do for those programs.
bool isSecret(const QList<PasteboardRepresentation> &representations);

} // namespace talmo
