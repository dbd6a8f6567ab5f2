#pragma once

#include <QString>

namespace talmo {

/// A language model's answer without what models like to put around one: an echo of the examples' arrow, a preamble
/// paragraph, tags, a code fence, quotation marks. Possibly empty.
QString sanitize(const QString &answer);

} // namespace talmo
