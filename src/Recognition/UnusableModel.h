#pragma once

#include "Base/DetailedError.h"

namespace talmo {

/// A model whose files are missing, damaged or of another kind, or that makes the process fail that loads it.
class UnusableModel : public DetailedError {
public:
    explicit UnusableModel(const QString &detail)
        : DetailedError(
              QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "This speech model cannot be used. Install it again.")), detail)
    {
    }
};

} // namespace talmo
