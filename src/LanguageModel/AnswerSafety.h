#pragma once

#include <QString>

namespace talmo {

/// The text without what could steer a program that it is pasted into, or hide a part of it from the eye: control
/// characters but tab and line feed, bidirectional embeddings, overrides and isolates, invisible characters that no
/// script needs, halves of surrogate pairs. Every other kind of line end becomes a line feed.
QString withoutControls(const QString &text);

/// Throws Error for an answer that is longer than any edited copy of the prompt could be.
void requireProportion(const QString &answer, const QString &prompt);

} // namespace talmo
