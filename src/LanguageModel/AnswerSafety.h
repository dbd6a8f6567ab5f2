#pragma once

#include <QString>

namespace talmo {

/// Removes characters that could control a program the text is pasted into, or hide part of the text: control
/// characters except tab and line feed; bidirectional embeddings, overrides and isolates; invisible characters that no
/// script needs; lone surrogates. Every other kind of line ending becomes a line feed.
QString withoutControls(const QString &text);

/// Throws Error if the answer is longer than any edited copy of the prompt could be.
void requireProportion(const QString &answer, const QString &prompt);

} // namespace talmo
