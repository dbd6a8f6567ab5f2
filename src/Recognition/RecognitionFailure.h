#pragma once

#include "Base/DetailedError.h"

namespace talmo {

/// A recogniser failed at a recording. Logs the detail itself, because what catches it shows only the description.
class RecognitionFailure : public DetailedError {
public:
    explicit RecognitionFailure(const QString &detail);
};

} // namespace talmo
