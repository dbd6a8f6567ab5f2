#pragma once

#include "Insertion/Pasteboard.h"

namespace talmo {

/// The types to offer beside a text so that clipboard history programs skip it. docs/Clipboard.md lists those that do.
QList<PasteboardRepresentation> historyHints();

/// Whether the content's owner asks clipboard history programs to skip it, as password managers do. Names and values
/// must match exactly, as they must for those programs.
bool isSecret(const QList<PasteboardRepresentation> &representations);

} // namespace talmo
