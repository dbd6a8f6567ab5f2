#pragma once

#include <QString>

namespace talmo {

/// Whether an English word, in lower case, is in the system's list of common words or names. Reads the list, half a
/// megabyte, at the first call; any thread. Every word counts as ordinary where there is no such list.
bool isOrdinaryWord(const QString &word);

} // namespace talmo
