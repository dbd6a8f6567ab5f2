#pragma once

#include "App/PipelineServices.h"

#include <QString>
#include <QStringList>

namespace talmo {

/// The user's preferences. Every change is announced before it is stored, also one to the value it has already.
/// They live as long as the process: nothing stores them on disk yet. Main thread only.
class TalmoSettings final : public SettingsService {
    Q_OBJECT

public:
    using SettingsService::SettingsService;

    bool aiCleanupEnabled() const override { return m_aiCleanupEnabled; }
    bool conciseTextEnabled() const override { return m_conciseTextEnabled; }
    TextTone textTone() const override { return m_textTone; }
    QStringList dictionaryWords() const override { return m_dictionaryWords; }

    void setAiCleanupEnabled(bool enabled) { publish(m_aiCleanupEnabled, enabled); }
    void setConciseTextEnabled(bool enabled) { publish(m_conciseTextEnabled, enabled); }
    void setTextTone(TextTone tone) { publish(m_textTone, tone); }
    void setDictionaryWords(const QStringList &words) { publish(m_dictionaryWords, words); }

    /// Appends the word, trimmed, unless it is empty or the list holds it already (case counts).
    void addDictionaryWord(const QString &word);

private:
    bool m_aiCleanupEnabled = true;
    bool m_conciseTextEnabled = false;
    TextTone m_textTone = TextTone::Standard;
    QStringList m_dictionaryWords = {QStringLiteral("Talmo"), QStringLiteral("Terraform"),
                                     QStringLiteral("CloudFormation"), QStringLiteral("Kubernetes")};
};

} // namespace talmo
