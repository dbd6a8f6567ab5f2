#pragma once

#include "App/PipelineServices.h"

namespace talmo {

/// The desktop's language, as the environment gives it.
class SystemLocaleSource final : public LocaleSource {
public:
    QString currentIdentifier() const override;
};

} // namespace talmo
