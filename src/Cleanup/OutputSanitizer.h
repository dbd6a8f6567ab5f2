#pragma once

#include <QString>

namespace talmo {

/// Removes what language models tend to put around an answer: an echo of the examples' arrow, a preamble paragraph,
/// tags, a code fence, quotation marks. The result may be empty.
QString sanitize(const QString &answer);

} // namespace talmo
