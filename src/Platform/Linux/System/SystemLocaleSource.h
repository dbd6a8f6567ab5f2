#pragma once

#include "App/Services/PipelineServices.h"

namespace talmo {

/// The language that the user has set for dictation, otherwise the desktop's, from the environment.
class SystemLocaleSource final : public LocaleSource {
public:
    explicit SystemLocaleSource(QString dictationLanguage = {});

    QString currentIdentifier() const override;

    /// Empty if it is the desktop's. Takes effect with the next recording.
    QString dictationLanguage() const { return m_dictationLanguage; }
    void setDictationLanguage(const QString &language) { m_dictationLanguage = language; }

private:
    QString m_dictationLanguage;
};

} // namespace talmo
