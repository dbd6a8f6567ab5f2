#pragma once

#include <QByteArrayList>

namespace talmo {

/// How differently two words sound, given their phones: about 1 for each phone that is there in one only, or is another
/// one in the other; half of that for phones that are easily mistaken for each other, such as "T" and "D".
double soundDistance(const QByteArrayList &left, const QByteArrayList &right);

/// Up to which distance something may be a word of that sound. Short words must sound the same.
double mostDistance(const QByteArrayList &sound);

} // namespace talmo
