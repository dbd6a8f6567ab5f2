#pragma once

#include "App/Services/PipelineServices.h"

namespace talmo {

/// The language that the user set for dictation, else the desktop's, from the environment.
class SystemLocaleSource final : public LocaleSource {
public:
    explicit SystemLocaleSource(QString dictationLanguage = {});

    QString currentIdentifier() const override;

private:
    QString m_dictationLanguage;
};

} // namespace talmo
